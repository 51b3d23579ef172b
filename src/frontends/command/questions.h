// Alert panels as questions on the terminal, or answered beforehand by an option.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "src/server/mac/platform/application.h"

namespace norvik::command {

// Where answers come from.
struct Answers {
  std::optional<int> fixed;        // one for every question: 1, 0 or -1
  std::istream* person = nullptr;  // who types them, at a terminal; null where there is nobody
};

struct Question {
  std::string title;
  std::string message;
  std::vector<std::string> buttons;  // default, alternate and, where there is one, other
  std::optional<int> answer;         // 1, 0 or -1; nothing where nobody could answer
};

class Questions : public AlertPanels {
 public:
  // Questions are written to `out`. Borrows it, and the person's stream.
  Questions(const Answers& answers, std::ostream& out) : answers_(answers), out_(out) {}

  // Blocks until a person has answered. A question that nobody answers is recorded, and answered with -1 like
  // a panel that is closed: every question of the pane takes that as a no.
  int NSRunAlertPanel(const char* title, const char* message, const char* defaultButton,
                      const char* alternateButton, const char* otherButton) override;

  const std::vector<Question>& asked() const { return asked_; }
  // The first that nobody could answer; null where there is none.
  const Question* unanswered() const;

 private:
  std::optional<int> answer(const Question& question);
  std::optional<int> askPerson(const Question& question);

  Answers answers_;
  std::ostream& out_;
  std::vector<Question> asked_;
};

// The words for 1, 0 and -1 on the command line.
inline constexpr std::string_view kAnswerWords[] = {"default", "alternate", "other"};
std::string_view answerWord(int answer);
// The answer that one of the words means.
int answerOf(std::string_view word);
// The button that an answer presses.
const std::string& buttonOf(const Question& question, int answer);

}  // namespace norvik::command
