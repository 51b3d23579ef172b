// The words of the completion, from the tables of commands, options, questions and settings.
#include "src/frontends/command/completion.h"

#include <algorithm>
#include <iterator>
#include <ostream>

#include "src/frontends/command/command_line.h"
#include "src/frontends/command/session.h"
#include "src/frontends/shared/checks/value_check.h"

namespace norvik::command {

namespace {

using Words = std::vector<std::string>;

template <typename Rows>
Words namesIn(const Rows& rows) {
  Words names;
  for (const auto& row : rows) names.emplace_back(row.name);
  return names;
}

// A text as one word of the shell, in the form that every command takes as well.
std::string oneWord(std::string_view text) {
  std::string word = folded(text);
  std::ranges::replace(word, ' ', '-');
  return word;
}

Words valuesOf(const SettingDescription& setting) {
  Words words;
  switch (setting.first().kind) {
    case ControlKind::checkBox:
      words = {"on", "off"};
      break;
    case ControlKind::popUp:
      for (const std::string& item : setting.first().items) words.push_back(oneWord(item));
      break;
    case ControlKind::radioButton:
      for (const ControlDescription* button : setting.controls) words.push_back(button->choice);
      break;
    default:
      break;  // a number is for the person to choose
  }
  words.emplace_back("default");
  return words;
}

Words pagesOf(const std::vector<SettingDescription>& settings) {
  Words words;
  for (const SettingDescription& setting : settings) {
    const std::string word = oneWord(setting.page.title);
    if (std::ranges::count(words, word) == 0) words.push_back(word);
  }
  return words;
}

Words takingOptions() {
  Words names;
  for (const Option& option : options()) {
    if (option.takes != OptionValue::none) names.emplace_back(option.name);
  }
  return names;
}

// The scripts in the order of the shells.
using Script = std::string (*)(const CompletionWords& words);
constexpr Script kScripts[] = {bash::script, zsh::script, fish::script};
static_assert(std::size(kScripts) == std::size(kShells));

}  // namespace

std::vector<std::string> namesOf(const std::vector<NamedWords>& rows) {
  return namesIn(rows);
}

CompletionWords completionWords(const std::vector<SettingDescription>& settings) {
  CompletionWords words{namesIn(commands()), namesIn(options()), pagesOf(settings), takingOptions(), {}, {}};
  for (const SettingDescription& setting : settings)
    words.values.push_back({setting.name, valuesOf(setting)});
  for (const QuestionRow& question : questionTable())
    words.answers.push_back({std::string(question.name), {question.answers.begin(), question.answers.end()}});
  return words;
}

ExitStatus printCompletion(const Context& context, const CommandLine& line) {
  const auto* shell = std::ranges::find(kShells, line.arguments.front());
  const std::string script = kScripts[shell - kShells](completionWords(shownSettings(context)));
  if (!context.json) context.out << script;
  return finish(context.output(), ChangeReport(), {{"script", script}});
}

}  // namespace norvik::command
