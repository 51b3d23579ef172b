// What norvikctl returns to the shell. The numbers are those of sysexits.h.
#pragma once

#include <span>
#include <string_view>

#include "src/frontends/shared/change/failure.h"

namespace norvik::command {

enum ExitStatus : int {
  kExitOk = 0,
  kExitDiffers = 1,     // no failure: the answer of diff
  kExitNotRunning = 3,  // no failure: the answer of is-running
  kExitTakenBack = 4,   // no failure: a change on trial that was not kept
  kExitUsage = 64,
  kExitData = 65,
  kExitDamaged = 66,
  kExitUnavailable = 69,
  kExitSoftware = 70,
  kExitCannotCreate = 73,
  kExitIo = 74,
  kExitTryAgain = 75,
  kExitNoPermission = 77,
  kExitNotSettable = 78,
  kExitInterrupted = 130,  // as shells have it for SIGINT
};

struct ExitStatusRow {
  FailureCode code;
  ExitStatus status;
  std::string_view meaning;  // for a person, as a heading: "a value is wrong"
};

// A row for each failure, in the order of the codes. Two failures may share a status.
std::span<const ExitStatusRow> exitStatuses();

ExitStatus exitStatusOf(FailureCode code);

}  // namespace norvik::command
