// getopt_long reads the words; the arguments are then checked against the command's row.
#include "src/frontends/command/command_line.h"

#include <getopt.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

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

// What getopt returns for the first option; above every character, as a character means an option of one
// letter.
constexpr int kFirstOption = 256;

std::vector<option> longOptions() {
  std::vector<option> rows;
  for (std::size_t i = 0; i < std::size(kOptions); ++i) {
    const int value = kOptions[i].value.empty() ? no_argument : required_argument;
    rows.push_back({kOptions[i].name.data() + 2, value, nullptr, kFirstOption + static_cast<int>(i)});
  }
  rows.push_back({});
  return rows;
}

// The minus asks for words in their order, the colon to know a missing value from an unknown option.
std::string shortOptions() {
  std::string letters = "-:";
  for (const Option& each : kOptions) {
    if (!each.alias.empty()) letters += each.alias[1];
  }
  return letters;
}

// The option that getopt means by a code; null for none of ours.
const Option* optionOf(int code) {
  if (code >= kFirstOption) return &kOptions[code - kFirstOption];
  const auto* found = std::ranges::find_if(
      kOptions, [&](const Option& each) { return !each.alias.empty() && each.alias[1] == code; });
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
// none. getopt's state is the process's, so one parser works at a time.
class Parser {
 public:
  explicit Parser(std::vector<std::string> words) : words_(std::move(words)) {}

  std::string parse() {
    std::string program;
    std::vector<char*> pointers{program.data()};
    for (std::string& word : words_) pointers.push_back(word.data());
    const int count = static_cast<int>(pointers.size());
    pointers.push_back(nullptr);
    char** const argv = pointers.data();
    const std::vector<option> longs = longOptions();
    const std::string shorts = shortOptions();
    optind = 0;
    opterr = 0;
    int code = 0;
    while ((code = getopt_long(count, argv, shorts.c_str(), longs.data(), nullptr)) != -1) {
      std::string fault = code == kWord ? readWord(optarg) : readOption(code, argv[optind - 1]);
      if (!fault.empty()) return fault;
    }
    for (; optind < count; ++optind) {  // behind "--"
      if (std::string fault = readWord(argv[optind]); !fault.empty()) return fault;
    }
    if (line_.help || line_.version) return "";
    if (line_.command == nullptr) return "a command is missing.";
    return checkArguments();
  }
  const CommandLine& line() const { return line_; }

 private:
  static constexpr int kWord = 1;  // getopt's code for a word that is no option

  // `word` is the one that getopt read last.
  std::string readOption(int code, std::string_view word) {
    const Option* option = optionOf(code == ':' || code == '?' ? optopt : code);
    if (option == nullptr) {
      const std::string name = optopt != 0 ? std::string{'-', static_cast<char>(optopt)}
                                           : std::string(word.substr(0, word.find('=')));
      return "unknown option " + inQuotes(name) + "." + suggestion(name, namesOf(kOptions));
    }
    const std::string name(option->name);
    if (code == '?') return name + " takes no value.";
    const std::string_view value = optarg != nullptr ? optarg : "";
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

  std::vector<std::string> words_;  // a copy, as getopt takes no const words
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
