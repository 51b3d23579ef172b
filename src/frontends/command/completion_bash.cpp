// Completion for bash. The shell splits words at equals signs, so a pair is up to three words.
#include "src/frontends/command/completion.h"

#include "src/frontends/command/command_line.h"
#include "src/server/mac/text/join.h"

namespace norvik::command::bash {

namespace {

std::string caseLines(const std::vector<NamedWords>& rows) {
  std::string cases;
  for (const NamedWords& row : rows)
    cases += "    " + row.name + ") echo \"" + joined(row.words, " ") + "\" ;;\n";
  return cases;
}

// A row of a "case" that proposes what compgen finds by these arguments.
std::string proposal(std::string_view name, const std::string& arguments) {
  return "    " + std::string(name) + ") COMPREPLY=($(compgen " + arguments + " -- \"$current\"))";
}

// A row that proposes the names of a variable and, behind an equals sign, what the function says for a name.
std::string pairProposal(std::string_view name, const std::string& names, const std::string& function) {
  return "    " + std::string(name) + ") _norvikctl_pair \"$_norvikctl_" + names + "\" _norvikctl_" +
         function;
}

std::string optionCases() {
  std::string cases;
  for (const Option& option : options()) {
    switch (option.takes) {
      case OptionValue::none:
        continue;
      case OptionValue::folder:
        cases += proposal(option.name, "-d");
        break;
      case OptionValue::answer:
        cases += pairProposal(option.name, "questions", "answers");
        break;
      case OptionValue::number:
        cases += "    " + std::string(option.name) + ") COMPREPLY=()";
        break;
    }
    cases += "; return ;;\n";
  }
  return cases;
}

std::string argumentCase(const Command& command) {
  switch (command.argument.kind) {
    case ArgumentKind::none:
    case ArgumentKind::number:
      return "";
    case ArgumentKind::pageOrSetting:
      return proposal(command.name, "-W \"$_norvikctl_pages $_norvikctl_settings\"") + " ;;\n";
    case ArgumentKind::setting:
      return proposal(command.name, "-W \"$_norvikctl_settings\"") + " ;;\n";
    case ArgumentKind::choice:
      return proposal(command.name, "-W \"" + joined(command.argument.choices, " ") + "\"") + " ;;\n";
    case ArgumentKind::file:
      return proposal(command.name, "-f") + " ;;\n";
    case ArgumentKind::assignment:
      return pairProposal(command.name, "settings", "values") + " ;;\n";
  }
  return "";
}

std::string argumentCases() {
  std::string cases;
  for (const Command& command : commands()) cases += argumentCase(command);
  return cases;
}

// The shell splits a word at the equals sign, so the value may be a word of its own after that sign.
constexpr const char* kPairFunction = R"bash(
_norvikctl_pair() {
  local names=$1 values=$2 current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} name=
  if [[ $current == "=" ]]; then name=$previous; current=
  elif [[ $previous == "=" ]]; then name=${COMP_WORDS[COMP_CWORD-2]}
  fi
  if [[ -n $name ]]; then
    COMPREPLY=($(compgen -W "$($values "$name")" -- "$current"))
  else
    COMPREPLY=($(compgen -S = -W "$names" -- "$current"))
    compopt -o nospace 2>/dev/null
  fi
}
)bash";

// An option's value is no command, even where it is called like one. An option whose value has an equals sign
// is three words before the end of its value.
constexpr const char* kFunctionBegin = R"bash(
_norvikctl() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} option command= word before=
  for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
    case " $_norvikctl_taking " in *" $before "*) before=; continue ;; esac
    before=$word
    case " $_norvikctl_commands " in *" $word "*) command=$word; break ;; esac
  done
  COMPREPLY=()
  option=$previous
  if [[ $current == "=" ]]; then option=${COMP_WORDS[COMP_CWORD-2]}
  elif [[ $previous == "=" ]]; then option=${COMP_WORDS[COMP_CWORD-3]}
  fi
  case $option in
)bash";
constexpr const char* kFunctionMiddle = R"bash(  esac
  if [[ $current == -* ]]; then
    COMPREPLY=($(compgen -W "$_norvikctl_options" -- "$current")); return
  fi
  case $command in
    "") COMPREPLY=($(compgen -W "$_norvikctl_commands" -- "$current")) ;;
)bash";
constexpr const char* kFunctionEnd = R"bash(  esac
}
complete -F _norvikctl norvikctl
)bash";

std::string variable(const std::string& name, const std::vector<std::string>& words) {
  return "_norvikctl_" + name + "=\"" + joined(words, " ") + "\"\n";
}

}  // namespace

std::string script(const CompletionWords& words) {
  return "# Completion of norvikctl for bash. To use it now: source <(norvikctl completion bash)\n" +
         variable("commands", words.commands) + variable("options", words.options) +
         variable("taking", words.taking) + variable("pages", words.pages) +
         variable("settings", namesOf(words.values)) + variable("questions", namesOf(words.answers)) +
         "\n# The values that a setting takes.\n_norvikctl_values() {\n  case $1 in\n" +
         caseLines(words.values) +
         "  esac\n}\n\n# The answers that a question takes.\n_norvikctl_answers() {\n  case $1 in\n" +
         caseLines(words.answers) + "  esac\n}\n" + kPairFunction + kFunctionBegin + optionCases() +
         kFunctionMiddle + argumentCases() + kFunctionEnd;
}

}  // namespace norvik::command::bash
