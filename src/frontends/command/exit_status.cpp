// The table of failures and their exit statuses.
#include "src/frontends/command/exit_status.h"

#include <cstddef>
#include <iterator>

#include "src/frontends/shared/language/language.h"

namespace norvik::command {

namespace {

// clang-format off
constexpr ExitStatusRow kRows[] = {
    {FailureCode::none,        kExitOk,           english("done, or nothing to do")},
    {FailureCode::usage,       kExitUsage,        english("the command line is wrong")},
    {FailureCode::wrongValue,  kExitData,         english("a value is wrong")},
    {FailureCode::damaged,     kExitDamaged,      english("a settings file is damaged")},
    {FailureCode::server,      kExitUnavailable,  english("the server does not do what it should")},
    {FailureCode::software,    kExitSoftware,     english("the program itself failed")},
    {FailureCode::notWritten,  kExitCannotCreate, english("a file was not written")},
    {FailureCode::output,      kExitIo,           english("the output was not written")},
    {FailureCode::tryAgain,    kExitTryAgain,     english("busy; try again")},
    {FailureCode::notAllowed,  kExitNoPermission, english("not allowed")},
    {FailureCode::notSettable, kExitNotSettable,  english("cannot be set as things are")},
    {FailureCode::cancelled,   kExitNotSettable,  english("a person chose not to go on")},
    {FailureCode::interrupted, kExitInterrupted,  english("interrupted")},
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
