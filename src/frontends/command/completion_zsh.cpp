// Completion for zsh, with what each command and option does beside it. A pair is one word; what is before
// its equals sign is set aside while the value is completed.
#include <algorithm>

#include "src/frontends/command/command_line.h"
#include "src/frontends/command/completion.h"
#include "src/server/mac/text/join.h"

namespace norvik::command::zsh {

namespace {

// A text between single quotes.
std::string inQuotes(std::string_view text) {
  std::string words = "'";
  for (const char letter : text) words += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
  return words + "'";
}

// "name:what it does", where a colon of the name would need an escape.
template <typename Rows>
std::string described(const char* name, const Rows& rows) {
  std::string script = "_norvikctl_" + std::string(name) + "=(\n";
  for (const auto& row : rows)
    script += "  " + inQuotes(std::string(row.name) + ":" + std::string(row.help)) + "\n";
  return script + ")\n";
}

std::string list(const char* name, const std::vector<std::string>& words) {
  return "_norvikctl_" + std::string(name) + "=(" + joined(words, " ") + ")\n";
}

// A function that sets `reply` to the words that belong to a name.
std::string replies(const char* name, const std::vector<NamedWords>& rows) {
  std::string script = "_norvikctl_" + std::string(name) + "() {\n  case $1 in\n";
  for (const NamedWords& row : rows)
    script += "    " + row.name + ") reply=(" + joined(row.words, " ") + ") ;;\n";
  return script + "  esac\n}\n";
}

std::string argumentCase(const Command& command) {
  const std::string begin = "    " + std::string(command.name) + ") ";
  switch (command.argument.kind) {
    case ArgumentKind::none:
    case ArgumentKind::number:
      return "";
    case ArgumentKind::pageOrSetting:
      return begin + "compadd -a _norvikctl_pages _norvikctl_settings ;;\n";
    case ArgumentKind::setting:
      return begin + "compadd -a _norvikctl_settings ;;\n";
    case ArgumentKind::choice:
      return begin + "compadd " + joined(command.argument.choices, " ") + " ;;\n";
    case ArgumentKind::file:
      return begin + "_files ;;\n";
    case ArgumentKind::assignment:
      return begin + "_norvikctl_pair _norvikctl_settings _norvikctl_values ;;\n";
  }
  return "";
}

std::string argumentCases() {
  std::string cases;
  for (const Command& command : commands()) cases += argumentCase(command);
  return cases;
}

// What completes the value of an option.
std::string valueOf(const Option& option) {
  switch (option.takes) {
    case OptionValue::folder:
      return "_files -/";
    case OptionValue::answer:
      return "_norvikctl_pair _norvikctl_questions _norvikctl_answers";
    case OptionValue::none:
    case OptionValue::number:
      break;
  }
  return ":";  // nothing does
}

// The value is the next word, or behind an equals sign.
std::string optionCases() {
  std::string cases;
  for (const Option& option : options()) {
    if (option.takes == OptionValue::none) continue;
    const std::string name(option.name);
    cases += "  if [[ $before == " + name + " ]] || compset -P '" + name + "='; then\n    " +
             valueOf(option) + "\n    return\n  fi\n";
  }
  return cases;
}

// `before` is the option whose value is completed, if any.
constexpr const char* kFunctions = R"zsh(
_norvikctl_pair() {
  local -a reply
  if compset -P '*='; then
    $2 "${${IPREFIX%=}##*=}"
    compadd -a reply
  else
    compadd -S = -a $1
  fi
}

_norvikctl() {
  local word command= before=
  for word in "${(@)words[2,CURRENT-1]}"; do
    if (( ${_norvikctl_taking[(Ie)$before]} )); then before=; continue; fi
    before=$word
    if [[ -z $command ]] && (( ${_norvikctl_names[(Ie)$word]} )); then command=$word; fi
  done
)zsh";
constexpr const char* kArguments = R"zsh(
  if [[ $PREFIX == -* ]]; then
    _describe -o option _norvikctl_options
    return
  fi
  case $command in
    "") _describe command _norvikctl_commands ;;
)zsh";
// The file is sourced, or is the body of the function when the shell loads it at the first completion.
constexpr const char* kEnd = R"zsh(  esac
}

if [[ ${funcstack[1]} == _norvikctl ]]; then
  _norvikctl "$@"
else
  compdef _norvikctl norvikctl
fi
)zsh";

}  // namespace

std::string script(const CompletionWords& words) {
  return "#compdef norvikctl\n"
         "# Completion of norvikctl for zsh. To use it now: source <(norvikctl completion zsh)\n"
         "typeset -ga _norvikctl_commands _norvikctl_options _norvikctl_names _norvikctl_taking "
         "_norvikctl_pages _norvikctl_settings "
         "_norvikctl_questions\n" +
         list("names", words.commands) + described("commands", commands()) + described("options", options()) +
         list("taking", words.taking) + list("pages", words.pages) + list("settings", namesOf(words.values)) +
         list("questions", namesOf(words.answers)) + "\n# The values that a setting takes.\n" +
         replies("values", words.values) + "\n# The answers that a question takes.\n" +
         replies("answers", words.answers) + kFunctions + optionCases() + kArguments + argumentCases() + kEnd;
}

}  // namespace norvik::command::zsh
