// Asks with the buttons' titles, numbered, until the answer is one of the numbers.
#include "src/frontends/command/questions.h"

#include <algorithm>
#include <istream>
#include <ostream>

#include "src/frontends/shared/checks/value_check.h"
#include "src/server/mac/text/trim.h"

namespace norvik::command {

namespace {

// The answers in the order of the buttons.
constexpr int kResults[] = {NSAlertDefaultReturn, NSAlertAlternateReturn, NSAlertOtherReturn};

std::size_t buttonIndex(int answer) {
  return static_cast<std::size_t>(NSAlertDefaultReturn - answer);
}

void write(std::ostream& out, const Question& question) {
  const std::string_view message = withoutTrailing(question.message, "\n");
  out << '\n' << question.title << "\n\n" << message << "\n\n";
  for (std::size_t i = 0; i < question.buttons.size(); ++i) {
    out << "  " << i + 1 << "  " << question.buttons[i] << (i == 0 ? "  (default)" : "") << '\n';
  }
}

}  // namespace

std::string_view answerWord(int answer) {
  return kAnswerWords[buttonIndex(answer)];
}

int answerOf(std::string_view word) {
  return kResults[std::ranges::find(kAnswerWords, word) - std::begin(kAnswerWords)];
}

const std::string& buttonOf(const Question& question, int answer) {
  return question.buttons.at(buttonIndex(answer));
}

int Questions::NSRunAlertPanel(const char* title, const char* message, const char* defaultButton,
                               const char* alternateButton, const char* otherButton) {
  Question question{title, message, {}, std::nullopt};
  for (const char* button : {defaultButton, alternateButton, otherButton}) {
    if (button != nullptr) question.buttons.emplace_back(button);
  }
  question.answer = answer(question);
  asked_.push_back(question);
  return question.answer.value_or(NSAlertOtherReturn);
}

const Question* Questions::unanswered() const {
  for (const Question& question : asked_) {
    if (!question.answer) return &question;
  }
  return nullptr;
}

std::optional<int> Questions::answer(const Question& question) {
  if (answers_.fixed) {
    const bool isThere = buttonIndex(*answers_.fixed) < question.buttons.size();
    return isThere ? answers_.fixed : std::nullopt;
  }
  return answers_.person != nullptr ? askPerson(question) : std::nullopt;
}

std::optional<int> Questions::askPerson(const Question& question) {
  write(out_, question);
  std::string line;
  while (true) {
    out_ << "\nYour choice [1]: " << std::flush;
    if (!std::getline(*answers_.person, line)) {
      out_ << '\n';
      return std::nullopt;
    }
    const auto number = line.empty() ? 1 : wholeNumber(line).value_or(0);
    if (number >= 1 && number <= static_cast<int64_t>(question.buttons.size())) {
      return kResults[number - 1];
    }
    out_ << "Please type a number from 1 to " << question.buttons.size() << ".\n";
  }
}

}  // namespace norvik::command
