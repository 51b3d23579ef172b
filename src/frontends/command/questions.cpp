// Asks with the buttons' titles, numbered, until the answer is one of the numbers or words.
#include "src/frontends/command/questions.h"

#include <algorithm>
#include <istream>
#include <nlohmann/json.hpp>
#include <ostream>

#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/language/pane_texts.h"
#include "src/server/mac/text/trim.h"

namespace norvik::command {

namespace {

using Json = nlohmann::ordered_json;

// What a panel returns, in the order of its buttons.
constexpr int kResults[] = {NSAlertDefaultReturn, NSAlertAlternateReturn, NSAlertOtherReturn};

// The word of an answer; empty for a question without a row.
std::string wordOf(const Question& question, std::size_t answer) {
  const bool isKnown = question.row != nullptr && answer < question.row->answers.size();
  return isKnown ? std::string(question.row->answers[answer]) : "";
}

void write(std::ostream& out, const Question& question) {
  const std::string_view message = withoutTrailing(question.message, "\n");
  out << '\n' << question.title << "\n\n" << message << "\n\n";
  for (std::size_t i = 0; i < question.buttons.size(); ++i) {
    out << "  " << i + 1 << "  " << question.buttons[i] << (i == 0 ? "  " + translated("(default)") : "")
        << '\n';
  }
}

// The button that a person means by its number, by the answer's word, or by nothing, the first.
std::optional<std::size_t> chosen(const Question& question, const std::string& typed) {
  for (std::size_t i = 0; i < question.buttons.size(); ++i) {
    const bool isWord = !typed.empty() && typed == wordOf(question, i);
    if (isWord || typed == std::to_string(i + 1) || (typed.empty() && i == 0)) return i;
  }
  return std::nullopt;
}

}  // namespace

int Questions::NSRunAlertPanel(const char* title, const char* message, const char* defaultButton,
                               const char* alternateButton, const char* otherButton) {
  Question question{questionTitled(title), paneText(title), paneText(message), {}, std::nullopt};
  for (const char* button : {defaultButton, alternateButton, otherButton}) {
    if (button != nullptr) question.buttons.push_back(paneText(button));
  }
  const auto number = ask(std::move(question));
  return number ? kResults[*number] : NSAlertOtherReturn;
}

std::optional<std::size_t> Questions::ask(Question question) {
  question.answer = answer(question);
  asked_.push_back(std::move(question));
  return asked_.back().answer;
}

const Question* Questions::unanswered() const {
  for (const Question& question : asked_) {
    if (!question.answer) return &question;
  }
  return nullptr;
}

std::optional<std::size_t> Questions::answer(const Question& question) {
  const auto given = question.row != nullptr ? answers_.given.find(question.row->name) : answers_.given.end();
  if (given != answers_.given.end() && given->second < question.buttons.size()) return given->second;
  if (answers_.byDefault) return 0;
  return answers_.person != nullptr ? askPerson(question) : std::nullopt;
}

std::optional<std::size_t> Questions::askPerson(const Question& question) {
  write(out_, question);
  std::string line;
  while (true) {
    out_ << '\n' << translated("Your choice [1]: ") << std::flush;
    if (!std::getline(*answers_.person, line)) {
      out_ << '\n';
      return std::nullopt;
    }
    if (const auto choice = chosen(question, line)) return choice;
    out_ << sentence("Please type a number from 1 to {1}.", {std::to_string(question.buttons.size())})
         << '\n';
  }
}

std::string answered(const Question& question) {
  const std::string name = question.row != nullptr ? std::string(question.row->name) + "=" : "";
  const std::string button =
      question.answer ? question.buttons[*question.answer] : translated("not answered");
  const std::string word = question.answer ? wordOf(question, *question.answer) : "?";
  return sentence("{1} ({2}: {3})", {name + word, question.title, button});
}

std::string waysToAnswer(const Question& question) {
  std::vector<std::string> ways;
  for (std::size_t i = 0; i < question.buttons.size() && question.row != nullptr; ++i) {
    const std::string way = "--answer " + std::string(question.row->name) + "=" + wordOf(question, i);
    ways.push_back(sentence("{1} for \"{2}\"", {way, question.buttons[i]}));
  }
  return oneOf(ways);
}

nlohmann::ordered_json questionsJson(const std::vector<Question>& questions) {
  Json list = Json::array();
  for (const Question& question : questions) {
    Json words = Json::array();
    for (std::size_t i = 0; i < question.buttons.size(); ++i) words.push_back(wordOf(question, i));
    list.push_back({{"name", question.row != nullptr ? Json(question.row->name) : Json(nullptr)},
                    {"title", question.title},
                    {"answers", std::move(words)},
                    {"buttons", question.buttons},
                    {"answer", question.answer ? Json(wordOf(question, *question.answer)) : Json(nullptr)}});
  }
  return list;
}

}  // namespace norvik::command
