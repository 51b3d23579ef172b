// Reads the words from left to right, then checks the arguments against the command's row.
#include "src/frontends/command/command_line.h"

#include <algorithm>

#include "src/frontends/command/nearest.h"
#include "src/frontends/command/questions.h"
#include "src/frontends/shared/checks/value_check.h"

namespace norvik::command {

namespace {

// clang-format off
constexpr Option kOptions[] = {
    {"--root", "", "DIR", "Work on the sandbox in this folder instead of this computer", {}, nullptr,
     [](CommandLine& line, std::string_view value) { line.root = value; }},
    {"--json", "", "", "Print JSON", {}, nullptr,
     [](CommandLine& line, std::string_view) { line.json = true; }},
    {"--answer", "", "BUTTON", "Answer every question with this button: default, alternate or other", kAnswerWords,
     nullptr, [](CommandLine& line, std::string_view value) { line.answer = answerOf(value); }},
    {"--dry-run", "", "", "Only show what set would change, save and run", {}, &Command::takesDryRun,
     [](CommandLine& line, std::string_view) { line.dryRun = true; }},
    {"--help", "-h", "", "Print help, for a command or for all", {}, nullptr,
     [](CommandLine& line, std::string_view) { line.help = true; }},
    {"--version", "", "", "Print the version", {}, nullptr,
     [](CommandLine& line, std::string_view) { line.version = true; }},
};
// clang-format on
static_assert(std::ranges::none_of(kOptions, [](const Option& option) { return option.apply == nullptr; }));

const Option* findOption(std::string_view name) {
  const auto* found = std::ranges::find_if(
      kOptions, [&](const Option& option) { return name == option.name || name == option.alias; });
  return found != std::end(kOptions) ? found : nullptr;
}

template <typename Rows>
std::vector<std::string> namesOf(const Rows& rows) {
  std::vector<std::string> names;
  for (const auto& row : rows) names.emplace_back(row.name);
  return names;
}

std::string inQuotes(std::string_view word) {
  return "\"" + std::string(word) + "\"";
}

// Empty where there is no choice to make, or the word is one of the choices.
std::string wrongChoice(std::string_view taker, std::span<const std::string_view> choices,
                        std::string_view word) {
  if (choices.empty() || std::ranges::count(choices, word) > 0) return "";
  const std::vector<std::string> known(choices.begin(), choices.end());
  return std::string(taker) + " takes " + listInWords(known, "or") + ", not " + inQuotes(word) + "." +
         suggestion(word, known);
}

// Reads the words of one line. Each operation returns the fault that it found, which is empty where there is
// none.
class Parser {
 public:
  explicit Parser(const std::vector<std::string>& words) : words_(words) {}

  std::string parse() {
    bool onlyArguments = false;
    while (next_ < words_.size()) {
      const std::string& word = words_[next_++];
      const bool isOption = !onlyArguments && word.size() > 1 && word.starts_with('-');
      if (isOption && word == "--") {
        onlyArguments = true;
      } else if (std::string fault = isOption ? readOption(word) : readWord(word); !fault.empty()) {
        return fault;
      }
    }
    if (line_.help || line_.version) return "";
    if (line_.command == nullptr) return "a command is missing.";
    return checkArguments();
  }
  const CommandLine& line() const { return line_; }

 private:
  std::string readOption(const std::string& word) {
    const std::size_t equals = word.find('=');
    const std::string name = word.substr(0, equals);
    const Option* option = findOption(name);
    if (option == nullptr) {
      return "unknown option " + inQuotes(name) + "." + suggestion(name, namesOf(kOptions));
    }
    std::string value;
    if (equals != std::string::npos) {
      if (option->value.empty()) return name + " takes no value.";
      value = word.substr(equals + 1);
    } else if (!option->value.empty() && next_ < words_.size()) {
      value = words_[next_++];
    }
    if (!option->value.empty() && value.empty()) return name + " needs a value.";
    std::string fault = wrongChoice(name, option->choices, value);
    if (!fault.empty()) return fault;
    option->apply(line_, value);
    options_.push_back(option);
    return "";
  }

  std::string readWord(const std::string& word) {
    if (line_.command != nullptr) {
      line_.arguments.push_back(word);
      return "";
    }
    line_.command = findCommand(word);
    if (line_.command != nullptr) return "";
    return "unknown command " + inQuotes(word) + "." + suggestion(word, namesOf(commands()));
  }

  std::string checkArguments() const {
    const Command& command = *line_.command;
    const ArgumentDescription& argument = command.argument;
    const Arguments& given = line_.arguments;
    const std::string name(command.name);
    if (given.size() > argument.most) return "unexpected argument " + inQuotes(given[argument.most]) + ".";
    if (given.size() < argument.least) return name + " needs a " + std::string(argument.placeholder) + ".";
    for (const std::string& word : given) {
      if (std::string fault = wrongChoice(name, argument.choices, word); !fault.empty()) return fault;
    }
    for (const Option* option : options_) {
      if (!takes(command, *option)) return name + " takes no " + std::string(option->name) + ".";
    }
    return "";
  }

  const std::vector<std::string>& words_;
  std::size_t next_ = 0;
  std::vector<const Option*> options_;
  CommandLine line_;
};

}  // namespace

std::span<const Option> options() {
  return kOptions;
}

bool takes(const Command& command, const Option& option) {
  return option.allowance == nullptr || command.*option.allowance;
}

std::optional<CommandLine> parseCommandLine(const std::vector<std::string>& words, std::string& fault) {
  Parser parser(words);
  fault = parser.parse();
  if (!fault.empty()) return std::nullopt;
  return parser.line();
}

}  // namespace norvik::command
