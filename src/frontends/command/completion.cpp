// A script with the words in it, rather than one that asks the program at every key.
#include "src/frontends/command/completion.h"

#include <algorithm>

#include "src/frontends/command/command_line.h"
#include "src/frontends/command/commands.h"
#include "src/frontends/shared/checks/value_check.h"
#include "src/server/mac/text/join.h"

namespace norvik::command {

namespace {

template <typename Descriptions>
std::string namesOf(const Descriptions& descriptions) {
  return joined(descriptions, " ", [](const auto& description) { return description.name; });
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
      return {"on", "off"};
    case ControlKind::popUp:
      for (const std::string& item : setting.first().items) words.push_back(oneWord(item));
      return words;
    case ControlKind::radioButton:
      for (const ControlDescription* button : setting.controls) words.push_back(button->choice);
      return words;
    default:
      return words;  // numbers are the person's own
  }
}

std::string valueCases(const std::vector<SettingDescription>& settings) {
  std::string cases;
  for (const SettingDescription& setting : settings) {
    const Words values = valuesOf(setting);
    if (!values.empty()) cases += "    " + setting.name + ") echo \"" + joined(values, " ") + "\" ;;\n";
  }
  return cases;
}

std::string pages(const std::vector<SettingDescription>& settings) {
  Words words;
  for (const SettingDescription& setting : settings) {
    const std::string word = oneWord(setting.page.title);
    if (std::ranges::count(words, word) == 0) words.push_back(word);
  }
  return joined(words, " ");
}

// The shell splits a word at the equals sign, so the value may be the word behind a sign of its own.
constexpr const char* kFunctions = R"bash(
_norvikctl() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} command= word name=
  for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
    case " $_norvikctl_commands " in *" $word "*) command=$word; break ;; esac
  done
  COMPREPLY=()
  case $previous in
    --root) COMPREPLY=($(compgen -d -- "$current")); return ;;
    --answer) COMPREPLY=($(compgen -W "$_norvikctl_answers" -- "$current")); return ;;
  esac
  if [[ $current == -* ]]; then
    COMPREPLY=($(compgen -W "$_norvikctl_options" -- "$current")); return
  fi
  case $command in
    "") COMPREPLY=($(compgen -W "$_norvikctl_commands" -- "$current")) ;;
    show) COMPREPLY=($(compgen -W "$_norvikctl_pages $_norvikctl_settings" -- "$current")) ;;
    get) COMPREPLY=($(compgen -W "$_norvikctl_settings" -- "$current")) ;;
    limits) COMPREPLY=($(compgen -W "$_norvikctl_steps" -- "$current")) ;;
    completion) COMPREPLY=($(compgen -W "bash" -- "$current")) ;;
    set)
      if [[ $current == "=" ]]; then name=$previous; current=
      elif [[ $previous == "=" ]]; then name=${COMP_WORDS[COMP_CWORD-2]}
      fi
      if [[ -n $name ]]; then
        COMPREPLY=($(compgen -W "$(_norvikctl_values "$name")" -- "$current"))
      else
        COMPREPLY=($(compgen -S = -W "$_norvikctl_settings" -- "$current"))
        compopt -o nospace 2>/dev/null
      fi ;;
  esac
}
complete -F _norvikctl norvikctl
)bash";

}  // namespace

std::string bashCompletion(const std::vector<SettingDescription>& settings) {
  return "# Completion of norvikctl for bash. To use it now: source <(norvikctl completion bash)\n"
         "_norvikctl_commands=\"" +
         namesOf(commandDescriptions()) + "\"\n" + "_norvikctl_options=\"" + namesOf(optionDescriptions()) +
         " --dry-run --help --version\"\n" + "_norvikctl_answers=\"" + joined(answerWords(), " ") + "\"\n" +
         "_norvikctl_steps=\"" + joined(limitSteps(), " ") + "\"\n" + "_norvikctl_pages=\"" +
         pages(settings) + "\"\n" + "_norvikctl_settings=\"" + namesOf(settings) + "\"\n\n" +
         "# The values that a setting takes.\n_norvikctl_values() {\n  case $1 in\n" + valueCases(settings) +
         "  esac\n}\n" + kFunctions;
}

}  // namespace norvik::command
