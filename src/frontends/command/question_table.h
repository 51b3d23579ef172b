// The questions that a command may meet, by name: a row for each. A question of the pane is known by the
// title of its alert panel, never by its message.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace norvik::command {

struct QuestionRow {
  std::string_view name;     // on the command line and in JSON: "restart"
  std::string_view title;    // of the alert panel; empty for a question that norvikctl itself asks
  std::string_view meaning;  // for a person, a question in plain words
  // In the order of the panel's buttons; the first is the default.
  std::span<const std::string_view> answers;
};

// In the order of the help.
std::span<const QuestionRow> questionTable();

// Null where there is none of that name, or with that title.
const QuestionRow* findQuestion(std::string_view name);
const QuestionRow* questionTitled(std::string_view title);

// The questions that norvikctl itself asks, and others that options name.
inline constexpr std::string_view kRestartQuestion = "restart";
inline constexpr std::string_view kDamagedQuestion = "damaged";

// "restart=later|now", as help shows it.
std::string formOf(const QuestionRow& question);

}  // namespace norvik::command
