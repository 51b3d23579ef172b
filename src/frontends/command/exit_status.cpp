// The table of failures and their exit statuses.
#include "src/frontends/command/exit_status.h"

#include <cstddef>
#include <iterator>

namespace norvik::command {

namespace {

// clang-format off
constexpr ExitStatusRow kRows[] = {
    {FailureCode::none,        kExitOk,           "done, or nothing to do"},
    {FailureCode::usage,       kExitUsage,        "the command line is wrong"},
    {FailureCode::wrongValue,  kExitData,         "a value is wrong"},
    {FailureCode::damaged,     kExitDamaged,      "a settings file is damaged"},
    {FailureCode::server,      kExitUnavailable,  "the server does not do what it should"},
    {FailureCode::software,    kExitSoftware,     "the program itself failed"},
    {FailureCode::notWritten,  kExitCannotCreate, "a file was not written"},
    {FailureCode::output,      kExitIo,           "the output was not written"},
    {FailureCode::tryAgain,    kExitTryAgain,     "busy; try again"},
    {FailureCode::notAllowed,  kExitNoPermission, "not allowed"},
    {FailureCode::notSettable, kExitNotSettable,  "cannot be set as things are"},
    {FailureCode::cancelled,   kExitNotSettable,  "a person chose not to go on"},
    {FailureCode::interrupted, kExitInterrupted,  "interrupted"},
};
// clang-format on

constexpr bool inTheOrderOfTheCodes() {
  for (std::size_t i = 0; i < std::size(kRows); ++i) {
    if (kRows[i].code != static_cast<FailureCode>(i)) return false;
  }
  return std::size(kRows) == static_cast<std::size_t>(FailureCode::interrupted) + 1;
}
static_assert(inTheOrderOfTheCodes(), "every failure has one row, in the order of the codes");

}  // namespace

std::span<const ExitStatusRow> exitStatuses() {
  return kRows;
}

ExitStatus exitStatusOf(FailureCode code) {
  return kRows[static_cast<std::size_t>(code)].status;
}

}  // namespace norvik::command
