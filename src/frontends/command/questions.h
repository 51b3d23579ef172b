// Alert panels as questions on the terminal, or answered beforehand by options that name them.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <map>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "src/frontends/command/question_table.h"
#include "src/server/mac/platform/application.h"

namespace norvik::command {

// The answers given beforehand: the name of a question in the table, and the number of its answer there.
using GivenAnswers = std::map<std::string_view, std::size_t>;

// Where answers come from, in this order.
struct Answers {
  GivenAnswers given;
  bool byDefault = false;          // every other question gets its default answer
  std::istream* person = nullptr;  // who types them, at a terminal; null where there is nobody
};

struct Question {
  const QuestionRow* row = nullptr;  // null for a question that the table does not know
  std::string title;
  std::string message;
  std::vector<std::string> buttons;   // default, alternate and, where there is one, other
  std::optional<std::size_t> answer;  // the number of the button; nothing where nobody could answer
};

class Questions : public AlertPanels {
 public:
  // Questions are written to `out`. Borrows it, and the person's stream.
  Questions(Answers answers, std::ostream& out) : answers_(std::move(answers)), out_(out) {}

  // Blocks until a person has answered. A question that nobody answers is recorded, and answered with -1 like
  // a panel that is closed: every question of the pane takes that as a no.
  int NSRunAlertPanel(const char* title, const char* message, const char* defaultButton,
                      const char* alternateButton, const char* otherButton) override;

  // Asks a question of norvikctl's own in the same way; returns the number of its answer, nothing where
  // nobody answers.
  std::optional<std::size_t> ask(Question question);

  // From now on nobody is asked: a question that is not answered beforehand gets its default answer.
  void askNobody() {
    answers_.byDefault = true;
    answers_.person = nullptr;
  }

  const std::vector<Question>& asked() const { return asked_; }
  // The first that nobody could answer; null where there is none.
  const Question* unanswered() const;

 private:
  std::optional<std::size_t> answer(const Question& question);
  std::optional<std::size_t> askPerson(const Question& question);

  Answers answers_;
  std::ostream& out_;
  std::vector<Question> asked_;
};

// "restart=later (Reboot is required: No, I'll Reboot Later)".
std::string answered(const Question& question);
// What to type so that the question is answered beforehand: "--answer restart=later for \"No, I'll Reboot
// Later\"".
std::string waysToAnswer(const Question& question);
// {"name": "restart", "title": ..., "answers": [...], "buttons": [...], "answer": "later"}; the answer is
// null where there is none.
nlohmann::ordered_json questionsJson(const std::vector<Question>& questions);

}  // namespace norvik::command
