// Completion for fish, with what each command and option does beside it. fish matches whole words, so that
// each pair is proposed as a whole; it puts no blank behind a word that ends with an equals sign.
#include "src/frontends/command/command_line.h"
#include "src/frontends/command/completion.h"
#include "src/server/mac/text/join.h"

namespace norvik::command::fish {

namespace {

std::string inQuotes(std::string_view text) {
  std::string words = "'";
  for (const char letter : text) {
    if (letter == '\'' || letter == '\\') words += '\\';
    words += letter;
  }
  return words + "'";
}

// A function that prints the words that belong to a name, a line each.
std::string printed(const char* name, const std::vector<NamedWords>& rows) {
  std::string script = "function __norvikctl_" + std::string(name) + "\n  switch $argv[1]\n";
  for (const NamedWords& row : rows)
    script += "    case " + inQuotes(row.name) + "\n      printf '%s\\n' " + joined(row.words, " ") + "\n";
  return script + "  end\nend\n";
}

std::string commandLines() {
  std::string lines;
  for (const Command& command : commands())
    lines += "complete -c norvikctl -n __norvikctl_needs_command -a " + std::string(command.name) + " -d " +
             inQuotes(command.help) + "\n";
  return lines;
}

std::string valueOf(const Option& option) {
  switch (option.takes) {
    case OptionValue::none:
      return "";
    case OptionValue::number:
      return " -x";
    case OptionValue::folder:
      return " -x -a '(__fish_complete_directories (__norvikctl_word --root))'";
    case OptionValue::answer:
      return " -x -a '(__norvikctl_pairs (__norvikctl_word --answer) __norvikctl_answers "
             "$__norvikctl_questions)'";
  }
  return "";
}

std::string optionLines() {
  std::string lines;
  for (const Option& option : options()) {
    lines += "complete -c norvikctl -l " + std::string(option.name.substr(2));
    if (!option.alias.empty()) lines += " -s " + std::string(option.alias.substr(1));
    lines += valueOf(option) + " -d " + inQuotes(option.help) + "\n";
  }
  return lines;
}

std::string wordsOf(const ArgumentDescription& argument) {
  switch (argument.kind) {
    case ArgumentKind::none:
    case ArgumentKind::number:
      return "";
    case ArgumentKind::pageOrSetting:
      return "\"$__norvikctl_pages $__norvikctl_settings\"";
    case ArgumentKind::setting:
      return "\"$__norvikctl_settings\"";
    case ArgumentKind::choice:
      return inQuotes(joined(argument.choices, " "));
    case ArgumentKind::file:
      return "'(__fish_complete_path (commandline -ct))'";
    case ArgumentKind::assignment:
      return "'(__norvikctl_pairs (commandline -ct) __norvikctl_values $__norvikctl_settings)'";
  }
  return "";
}

std::string argumentLines() {
  std::string lines;
  for (const Command& command : commands()) {
    const std::string words = wordsOf(command.argument);
    if (!words.empty())
      lines +=
          "complete -c norvikctl -n '__norvikctl_is " + std::string(command.name) + "' -a " + words + "\n";
  }
  return lines;
}

std::string variable(const char* name, const std::vector<std::string>& words) {
  return "set -g __norvikctl_" + std::string(name) + " " + joined(words, " ") + "\n";
}

// The value of an option may be a part of its word.
constexpr const char* kFunctions = R"fish(
# The command of the line, if there is one; the value of an option is none.
function __norvikctl_command
  set -l before
  for word in (commandline -opc)[2..]
    if contains -- "$before" $__norvikctl_taking
      set before
      continue
    end
    set before $word
    if contains -- $word $__norvikctl_commands
      echo $word
      return 0
    end
  end
  return 1
end

function __norvikctl_needs_command
  not __norvikctl_command >/dev/null
end

function __norvikctl_is
  contains -- $argv[1] (__norvikctl_command)
end

# The word that is completed, without the option before its equals sign.
function __norvikctl_word
  commandline -ct | string replace -r -- "^$argv[1]=" ''
end

# __norvikctl_pairs WORD FUNCTION NAME...: the names, or for a word with a name the pairs with its values.
function __norvikctl_pairs
  set -l name (string split -m 1 = -- $argv[1])
  if test (count $name) -gt 1
    for value in ($argv[2] $name[1])
      echo "$name[1]=$value"
    end
  else
    printf '%s=\n' $argv[3..]
  end
end

complete -c norvikctl -f
)fish";

}  // namespace

std::string script(const CompletionWords& words) {
  return "# Completion of norvikctl for fish. To use it now: norvikctl completion fish | source\n" +
         variable("commands", words.commands) + variable("taking", words.taking) +
         variable("pages", words.pages) + variable("settings", namesOf(words.values)) +
         variable("questions", namesOf(words.answers)) + "\n# The values that a setting takes.\n" +
         printed("values", words.values) + "\n# The answers that a question takes.\n" +
         printed("answers", words.answers) + kFunctions + commandLines() + optionLines() + argumentLines();
}

}  // namespace norvik::command::fish
