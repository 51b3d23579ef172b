// getopt_long reads the words; the arguments are then checked against the command's row.
#include "src/frontends/command/command_line.h"

#include <getopt.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

#include "src/frontends/shared/checks/nearest.h"
#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/trial/countdown.h"
#include "src/server/mac/text/join.h"

namespace norvik::command {

namespace {

template <typename Rows>
std::vector<std::string> namesOf(const Rows& rows) {
  std::vector<std::string> names;
  for (const auto& row : rows) names.emplace_back(row.name);
  return names;
}

// Empty where there is no choice to make, or the word is one of the choices.
std::string wrongChoice(std::string_view taker, std::span<const std::string_view> choices,
                        std::string_view word) {
  if (choices.empty() || std::ranges::count(choices, word) > 0) return "";
  const std::vector<std::string> known(choices.begin(), choices.end());
  return sentence("{1} takes {2}, not \"{3}\".", {taker, oneOf(known), word}) + suggestion(word, known);
}

// One word never answers two questions: every answer names its question.
std::string answerQuestion(CommandLine& line, std::string_view word) {
  const std::size_t equals = word.find('=');
  const std::string_view name = word.substr(0, equals);
  const QuestionRow* question = findQuestion(name);
  if (question == nullptr || equals == std::string_view::npos) {
    const std::string near = suggestion(name, namesOf(questionTable()));
    return joinedSentences(
        sentence("{1} takes a question's name and its answer, not \"{2}\".", {"--answer", word}) + near,
        sentence("The questions are {1}.", {joined(questionTable(), ", ", formOf)}));
  }
  const std::string_view answer = word.substr(equals + 1);
  std::string fault = wrongChoice(name, question->answers, answer);
  if (!fault.empty()) return fault;
  const auto number =
      static_cast<std::size_t>(std::ranges::find(question->answers, answer) - question->answers.begin());
  const auto [given, isNew] = line.answers.try_emplace(question->name, number);
  return isNew || given->second == number ? "" : sentence("{1} is answered in two ways.", {name});
}

constexpr int64_t kMostSeconds = 3600;

// How long to wait for something.
std::string readSeconds(auto& limit, std::string_view value) {
  const auto seconds = wholeNumber(value);
  if (!seconds || *seconds < 0 || *seconds > kMostSeconds) {
    return sentence("a time to wait is a whole number of seconds from 0 to {1}, not \"{2}\".",
                    {std::to_string(kMostSeconds), value});
  }
  limit = std::chrono::seconds(*seconds);
  return "";
}
template <std::chrono::milliseconds WaitLimits::*limit>
std::string setSeconds(CommandLine& line, std::string_view value) {
  return readSeconds(line.limits.*limit, value);
}

std::string setTrial(CommandLine& line, std::string_view value) {
  const auto seconds = wholeNumber(value);
  if (!seconds || *seconds < kShortestTrial.count() || *seconds > kLongestTrial.count()) {
    return sentence("a trial lasts a whole number of seconds from {1} to {2}, not \"{3}\".",
                    {std::to_string(kShortestTrial.count()), std::to_string(kLongestTrial.count()), value});
  }
  line.trial = std::chrono::seconds(*seconds);
  return "";
}

// An option that only sets a flag.
template <bool CommandLine::*flag>
std::string setFlag(CommandLine& line, std::string_view /*value*/) {
  line.*flag = true;
  return "";
}

// clang-format off
constexpr Option kOptions[] = {
    {"--root", "", "DIR", english("Work on the sandbox in this folder instead of this computer"), OptionValue::folder, SettingsUse::none, "",
     [](CommandLine& line, std::string_view value) { line.root = value; return std::string(); }},
    {"--json", "", "", english("Print JSON"), OptionValue::none, SettingsUse::none, "", setFlag<&CommandLine::json>},
    {"--answer", "", "QUESTION=ANSWER", english("Answer this question, should it come up; may be repeated"),
     OptionValue::answer, SettingsUse::none, "", answerQuestion},
    {"--reboot", "", "", english("Restart the computer now where a change needs it: restart=now"), OptionValue::none, SettingsUse::none, "",
     [](CommandLine& line, std::string_view) { return answerQuestion(line, "restart=now"); }},
    {"--no-reboot", "", "", english("Leave the restart of the computer for later: restart=later"), OptionValue::none, SettingsUse::none, "",
     [](CommandLine& line, std::string_view) { return answerQuestion(line, "restart=later"); }},
    {"--dry-run", "", "", english("Only show what set, unset, import or undo would change, save and run"), OptionValue::none,
     SettingsUse::previews, "", setFlag<&CommandLine::dryRun>},
    {"--try", "", "SECONDS", english("Take the change back after so long, from 5 to 3600, unless you type \"keep\""), OptionValue::number,
     SettingsUse::none, "set unset import stop", setTrial},
    {"--exact", "", "", english("Give every setting that the profile does not name its default"), OptionValue::none,
     SettingsUse::reads, "import diff", setFlag<&CommandLine::exact>},
    {"--changed-only", "", "", english("Leave out settings that have their default values"), OptionValue::none,
     SettingsUse::reads, "export", setFlag<&CommandLine::changedOnly>},
    {"--changed-again", "", "", english("Take back settings too that were changed again since"), OptionValue::none,
     SettingsUse::previews, "undo", setFlag<&CommandLine::changedAgain>},
    {"--search", "", "WORDS", english("Show the settings that are found by these words, the best first"), OptionValue::text,
     SettingsUse::reads, "show",
     [](CommandLine& line, std::string_view value) { line.search = value; return std::string(); }},
    {"--prometheus", "", "", english("Print the status as metrics, for the textfile collector of node_exporter"), OptionValue::none,
     SettingsUse::reads, "status", setFlag<&CommandLine::prometheus>},
    {"--wait-lock", "", "SECONDS", english("Wait so long for somebody else's change to end; 10 seconds unless given"),
     OptionValue::number, SettingsUse::changes, "", setSeconds<&WaitLimits::lock>},
    {"--wait-tools", "", "SECONDS", english("Wait so long for the programs that save; 30 seconds unless given"),
     OptionValue::number, SettingsUse::changes, "", setSeconds<&WaitLimits::tools>},
    {"--wait", "", "SECONDS", english("Wait so long until clients can connect; not at all unless given"), OptionValue::number, SettingsUse::none,
     "check", [](CommandLine& line, std::string_view value) { return readSeconds(line.waitForReach, value); }},
    {"--qr", "", "", english("Print the address as a QR code too"), OptionValue::none, SettingsUse::none, "check",
     setFlag<&CommandLine::qrCode>},
    {"--help", "-h", "", english("Print help, for a command or for all"), OptionValue::none, SettingsUse::none, "",
     setFlag<&CommandLine::help>},
    {"--version", "", "", english("Print the version"), OptionValue::none, SettingsUse::none, "", setFlag<&CommandLine::version>},
};
// clang-format on
static_assert(std::ranges::none_of(kOptions, [](const Option& option) { return option.apply == nullptr; }));
static_assert(std::ranges::all_of(kOptions, [](const Option& option) {
  return option.value.empty() == (option.takes == OptionValue::none);
}));

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

// Reads the words of one line to its end, also behind a mistake, as an option such as --json may follow it.
// Each operation returns the fault that it found, which is empty where there is none; the first one counts.
// getopt's state is the process's, so one parser works at a time.
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
    std::string first;
    const auto note = [&first](const std::string& fault) {
      if (first.empty()) first = fault;
    };
    int code = 0;
    while ((code = getopt_long(count, argv, shorts.c_str(), longs.data(), nullptr)) != -1) {
      note(code == kWord ? readWord(optarg) : readOption(code, argv[optind - 1]));
    }
    for (; optind < count; ++optind) note(readWord(argv[optind]));  // behind "--"
    if (!first.empty() || line_.help || line_.version) return first;
    if (line_.command == nullptr) return translated("a command is missing.");
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
      return sentence("unknown option \"{1}\".", {name}) + suggestion(name, namesOf(kOptions));
    }
    const std::string name(option->name);
    if (code == '?') return sentence("{1} takes no value.", {name});
    const std::string_view value = optarg != nullptr ? optarg : "";
    if (!option->value.empty() && value.empty()) return sentence("{1} needs a value.", {name});
    options_.push_back(option);
    return option->apply(line_, value);
  }

  std::string readWord(const std::string& word) {
    if (line_.command != nullptr) {
      line_.arguments.push_back(word);
      return "";
    }
    if (isUnknown_) return "";  // the words behind an unknown command are its arguments
    line_.command = findCommand(word);
    isUnknown_ = line_.command == nullptr;
    if (!isUnknown_) return "";
    return sentence("unknown command \"{1}\".", {word}) + suggestion(word, namesOf(commands()));
  }

  std::string checkArguments() const {
    const Command& command = *line_.command;
    const ArgumentDescription& argument = command.argument;
    const Arguments& given = line_.arguments;
    const std::string name(command.name);
    if (given.size() > argument.most) return sentence("unexpected argument \"{1}\".", {given[argument.most]});
    if (given.size() < argument.least) return sentence("{1} needs a {2}.", {name, argument.placeholder});
    for (const std::string& word : given) {
      if (std::string fault = wrongChoice(name, argument.choices, word); !fault.empty()) return fault;
    }
    if (line_.search && !given.empty()) return sentence("{1} takes a page or --search, not both.", {name});
    for (const Option* option : options_) {
      if (!takes(command, *option)) return sentence("{1} takes no {2}.", {name, option->name});
    }
    return "";
  }

  std::vector<std::string> words_;  // a copy, as getopt takes no const words
  std::vector<const Option*> options_;
  bool isUnknown_ = false;  // the command
  CommandLine line_;
};

}  // namespace

std::span<const Option> options() {
  return kOptions;
}

bool takes(const Command& command, const Option& option) {
  const std::string takers = " " + std::string(option.only) + " ";
  const bool isNamed = takers.find(" " + std::string(command.name) + " ") != std::string::npos;
  return command.use >= option.least && (option.only.empty() || isNamed);
}

CommandLine parseCommandLine(const std::vector<std::string>& words, std::string& fault) {
  Parser parser(words);
  fault = parser.parse();
  return parser.line();
}

}  // namespace norvik::command
