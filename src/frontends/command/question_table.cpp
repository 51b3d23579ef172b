// The rows of the question table.
#include "src/frontends/command/question_table.h"

#include <algorithm>
#include <iterator>

#include "src/frontends/shared/language/language.h"
#include "src/server/mac/text/join.h"

namespace norvik::command {

namespace {

constexpr std::string_view kYesNo[] = {"yes", "no"};
constexpr std::string_view kLaterNow[] = {"later", "now"};
constexpr std::string_view kApplyDiscard[] = {"apply", "discard"};
constexpr std::string_view kApplyDiscardContinue[] = {"apply", "discard", "continue"};
constexpr std::string_view kCancelRestoreReplace[] = {"cancel", "restore", "replace"};

// The last two of the pane come up when a person leaves it or closes its lock, which no command does.
// clang-format off
constexpr QuestionRow kQuestions[] = {
    {"limits",           "Multiuser Mode Adjustment",
     english("Raise the open files limit along with letting several users connect?"), kYesNo},
    {"reset-limits",     "Resetting Open Files Limit",
     english("Reset the open files limit to the system's default?"), kYesNo},
    {"graphics",         "Disabling Quartz Extreme acceleration",
     english("Turn off hardware window compositing, although some applications may need it?"), kYesNo},
    {"opengl",           "Norvik OpenGL driver mode",
     english("Switch to the server's own OpenGL driver?"), kYesNo},
    {kRestartQuestion,   "Reboot is required",
     english("Restart the computer now or later, where a change needs it?"), kLaterNow},
    {kDamagedQuestion,   "",
     english("Save over a damaged settings file, beginning with its kept copy or with the defaults?"), kCancelRestoreReplace},
    {"leave",            "Norvik Server options changed",
     english("Apply or discard what is pending when the panel is left?"), kApplyDiscard},
    {"lock",             "Norvik preferences was changed",
     english("Apply or discard what is pending when the lock is closed?"), kApplyDiscardContinue},
};
// clang-format on

constexpr bool isWhole(const QuestionRow& row) {
  return !row.name.empty() && !row.meaning.empty() && row.answers.size() >= 2 && row.answers.size() <= 3 &&
         std::ranges::count(kQuestions, row.name, &QuestionRow::name) == 1 &&
         std::ranges::count(kQuestions, row.title, &QuestionRow::title) == 1;
}
static_assert(std::ranges::all_of(kQuestions, isWhole),
              "every question has one row, with a meaning and an answer for each button");

}  // namespace

std::span<const QuestionRow> questionTable() {
  return kQuestions;
}

const QuestionRow* findQuestion(std::string_view name) {
  const auto* found = std::ranges::find(kQuestions, name, &QuestionRow::name);
  return found != std::end(kQuestions) ? found : nullptr;
}

const QuestionRow* questionTitled(std::string_view title) {
  const auto* found = std::ranges::find(kQuestions, title, &QuestionRow::title);
  return found != std::end(kQuestions) && !title.empty() ? found : nullptr;
}

std::string formOf(const QuestionRow& question) {
  return std::string(question.name) + "=" + joined(question.answers, "|");
}

}  // namespace norvik::command
