// The command line by itself: what each line means, and which sentence a mistake gets. And the tables behind
// it.
#include "src/frontends/command/command_line.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>

#include "src/frontends/command/diagnostic.h"
#include "src/frontends/command/help.h"

namespace norvik::command {
namespace {

using Line = std::vector<std::string>;

CommandLine parsed(const Line& words) {
  std::string fault;
  const CommandLine line = parseCommandLine(words, fault);
  EXPECT_EQ(fault, "");
  return line;
}

std::string faultOf(const Line& words) {
  std::string fault;
  parseCommandLine(words, fault);
  return fault;
}

// A value that the option takes.
std::string valueFor(const Option& option) {
  return option.takes == OptionValue::answer ? "limits=yes" : option.takes == OptionValue::number ? "5" : "x";
}

std::string helpOf(const Command& command) {
  std::ostringstream text;
  writeHelp(text, command, {});
  return text.str();
}

TEST(CommandLineTest, ACommandItsArgumentsAndTheOptions) {
  const CommandLine line = parsed(
      {"--root", "box", "set", "nvk.port=1", "--answer=limits=no", "nvk.sound=on", "--dry-run", "--json"});
  EXPECT_EQ(line.command, findCommand("set"));
  EXPECT_EQ(line.arguments, (Line{"nvk.port=1", "nvk.sound=on"}));
  EXPECT_EQ(line.root, "box");
  EXPECT_EQ(line.answers, (GivenAnswers{{"limits", 1}}));
  EXPECT_TRUE(line.dryRun);
  EXPECT_TRUE(line.json);
}

TEST(CommandLineTest, WithoutOptions) {
  const CommandLine line = parsed({"status"});
  EXPECT_FALSE(line.root.has_value());
  EXPECT_TRUE(line.answers.empty());
  EXPECT_FALSE(line.json || line.dryRun || line.help || line.version);
}

TEST(CommandLineTest, EveryOptionMayPrecedeOrFollowTheCommand) {
  for (const Option& option : options()) {
    const std::string taker(option.only.empty() ? "set" : option.only.substr(0, option.only.find(' ')));
    const Line arguments = findCommand(taker)->argument.least > 0 ? Line{"a=b"} : Line{};
    Line words{std::string(option.name)};
    if (!option.value.empty()) words.push_back(valueFor(option));
    Line command{taker}, before = words;
    command.insert(command.end(), arguments.begin(), arguments.end());
    before.insert(before.end(), command.begin(), command.end());
    command.insert(command.end(), words.begin(), words.end());
    for (const Line& line : {before, command}) {
      EXPECT_EQ(parsed(line).command, findCommand(taker)) << option.name;
      EXPECT_EQ(parsed(line).arguments, arguments) << option.name;
    }
  }
  EXPECT_TRUE(parsed({"-h"}).help);
  EXPECT_TRUE(parsed({"--dry-run", "set", "a=b"}).dryRun);
}

TEST(CommandLineTest, ATimeToWaitIsAWholeNumberOfSeconds) {
  EXPECT_EQ(parsed({"set", "a=b"}).limits.lock, std::chrono::seconds(10));
  EXPECT_EQ(parsed({"--wait-lock", "0", "set", "a=b"}).limits.lock, std::chrono::seconds(0));
  EXPECT_EQ(parsed({"set", "a=b", "--wait-tools=45"}).limits.tools, std::chrono::seconds(45));
  for (const char* wrong : {"-1", "3601", "1.5", "soon"}) {
    EXPECT_EQ(
        faultOf({"--wait-lock", wrong, "set", "a=b"}),
        std::string("a time to wait is a whole number of seconds from 0 to 3600, not \"") + wrong + "\".");
  }
  EXPECT_EQ(faultOf({"get", "a", "--wait-lock=5"}), "get takes no --wait-lock.");
  EXPECT_EQ(parsed({"check", "--wait", "20"}).waitForReach, std::chrono::seconds(20));
  EXPECT_EQ(faultOf({"set", "a=b", "--wait=5"}), "set takes no --wait.");
}

TEST(CommandLineTest, EachAnswerNamesItsQuestion) {
  EXPECT_EQ(parsed({"--answer", "limits=no", "--answer", "restart=later", "set", "a=b"}).answers,
            (GivenAnswers{{"limits", 1}, {"restart", 0}}));
  EXPECT_EQ(parsed({"--reboot", "set", "a=b"}).answers, (GivenAnswers{{"restart", 1}}));
  EXPECT_EQ(parsed({"--no-reboot", "--answer", "restart=later", "set", "a=b"}).answers,
            (GivenAnswers{{"restart", 0}}));
  EXPECT_EQ(parsed({"--answer", "damaged=replace", "set", "a=b"}).answers, (GivenAnswers{{"damaged", 2}}));
  EXPECT_EQ(faultOf({"--reboot", "--no-reboot", "set", "a=b"}), "restart is answered in two ways.");
  EXPECT_EQ(faultOf({"--answer", "limits=yes", "--answer", "limits=no", "set", "a=b"}),
            "limits is answered in two ways.");
  EXPECT_EQ(faultOf({"--answer", "limits=later", "set", "a=b"}), "limits takes yes or no, not \"later\".");
  EXPECT_EQ(faultOf({"--answer", "restart=", "set", "a=b"}), "restart takes later or now, not \"\".");
}

// An answer without a question would answer whatever comes up.
TEST(CommandLineTest, AnAnswerWithoutItsQuestionIsRefusedWithTheNames) {
  const std::string questions = " The questions are limits=yes|no, reset-limits=yes|no, graphics=yes|no, ";
  for (const char* word : {"default", "alternate", "other", "yes"}) {
    const std::string fault = faultOf({"--answer", word, "limits", "reset"});
    EXPECT_TRUE(fault.starts_with("--answer takes a question's name and its answer, not \"" +
                                  std::string(word) + "\"."))
        << fault;
    EXPECT_NE(fault.find(questions), std::string::npos) << fault;
  }
  EXPECT_NE(faultOf({"--answer", "restrat=now", "start"}).find("Did you mean \"restart\"?"),
            std::string::npos);
  EXPECT_NE(faultOf({"--answer", "restart", "start"}).find(questions), std::string::npos);
}

TEST(CommandLineTest, AMistakeDoesNotHideWhatElseTheLineSays) {
  std::string fault;
  const CommandLine line =
      parseCommandLine({"--rot", "strat", "nvk.port", "--json", "--answer", "yes"}, fault);
  EXPECT_EQ(fault, "unknown option \"--rot\". Did you mean \"--root\"?");
  EXPECT_TRUE(line.json);
  EXPECT_EQ(parseCommandLine({"set", "--root", "--json"}, fault).root, "--json");
  EXPECT_EQ(parseCommandLine({"limits", "up", "--json"}, fault).command, findCommand("limits"));
}

TEST(CommandLineTest, AnEmptyOrMissingValueIsAnError) {
  for (const Line& words : {Line{"--root", "", "status"}, Line{"--root=", "status"},
                            Line{"status", "--root="}, Line{"status", "--root"}}) {
    EXPECT_EQ(faultOf(words), "--root needs a value.");
  }
  EXPECT_EQ(faultOf({"--answer=", "status"}), "--answer needs a value.");
  EXPECT_EQ(faultOf({"status", "--json=yes"}), "--json takes no value.");
}

TEST(CommandLineTest, AfterTwoHyphensEveryWordIsAnArgument) {
  EXPECT_EQ(parsed({"get", "--", "--json", "-"}).arguments, (Line{"--json", "-"}));
  EXPECT_EQ(parsed({"get", "-"}).arguments, Line{"-"});
}

TEST(CommandLineTest, WhatIsUnknownProposesTheNearest) {
  EXPECT_EQ(faultOf({"strat"}), "unknown command \"strat\". Did you mean \"start\"?");
  EXPECT_EQ(faultOf({"xyzzyx"}), "unknown command \"xyzzyx\".");
  EXPECT_EQ(faultOf({"status", "--jsno"}), "unknown option \"--jsno\". Did you mean \"--json\"?");
  EXPECT_EQ(faultOf({"--rot=x", "status"}), "unknown option \"--rot\". Did you mean \"--root\"?");
  EXPECT_EQ(faultOf({"-x", "status"}), "unknown option \"-x\".");
  EXPECT_EQ(faultOf({"limits", "adjsut"}),
            "limits takes adjust or reset, not \"adjsut\". Did you mean \"adjust\"?");
  EXPECT_EQ(faultOf({"completion", "csh"}),
            "completion takes bash, zsh or fish, not \"csh\". Did you mean \"zsh\"?");
}

TEST(CommandLineTest, TooFewAndTooManyArguments) {
  EXPECT_EQ(faultOf({}), "a command is missing.");
  EXPECT_EQ(faultOf({"--json"}), "a command is missing.");
  EXPECT_EQ(faultOf({"get"}), "get needs a NAME.");
  EXPECT_EQ(faultOf({"set"}), "set needs a NAME=VALUE.");
  EXPECT_EQ(faultOf({"status", "extra"}), "unexpected argument \"extra\".");
  EXPECT_EQ(faultOf({"start", "stop"}), "unexpected argument \"stop\".");
  EXPECT_EQ(faultOf({"limits", "reset", ""}), "unexpected argument \"\".");
}

TEST(CommandLineTest, AnOptionOfSomeCommandsIsTakenByNoOther) {
  for (const Option& option : options()) {
    std::istringstream words{std::string(option.only)};
    std::set<std::string_view> takers;
    for (std::string name; words >> name;) {
      ASSERT_NE(findCommand(name), nullptr) << name;
      takers.insert(findCommand(name)->name);
    }
    for (const Command& command : commands()) {
      EXPECT_TRUE(takers.empty() || takes(command, option) == takers.contains(command.name)) << command.name;
    }
  }
  EXPECT_EQ(faultOf({"set", "a=b", "--exact"}), "set takes no --exact.");
}

TEST(CommandLineTest, OnlyWhatChangesSettingsTakesADryRun) {
  constexpr std::string_view kPreviewing[] = {"set", "unset", "import", "undo"};
  for (const Command& command : commands()) {
    Line words{"--dry-run", std::string(command.name)};
    const ArgumentDescription& argument = command.argument;
    if (argument.least > 0) words.emplace_back(argument.choices.empty() ? "a=b" : argument.choices[0]);
    if (std::ranges::count(kPreviewing, command.name) > 0) {
      EXPECT_TRUE(parsed(words).dryRun);
    } else {
      EXPECT_EQ(faultOf(words), std::string(command.name) + " takes no --dry-run.");
    }
  }
}

TEST(CommandLineTest, HelpAndVersionNeedNothingElse) {
  EXPECT_TRUE(parsed({"--help"}).help);
  EXPECT_TRUE(parsed({"set", "--help"}).help);
  EXPECT_EQ(parsed({"--help", "set"}).command, findCommand("set"));
  EXPECT_TRUE(parsed({"--version"}).version);
}

TEST(HelpTest, ShowsEveryCommandAndOption) {
  std::ostringstream help;
  writeHelp(help);
  const std::string text = help.str();
  EXPECT_NE(text.find("\nCommands:\n  status "), std::string::npos) << text;
  for (const Command& command : commands()) {
    EXPECT_NE(text.find("\n  " + std::string(command.name) + " "), std::string::npos) << command.name;
    EXPECT_NE(text.find("  " + std::string(command.help) + "\n"), std::string::npos) << command.name;
  }
  for (const Option& option : options()) {
    EXPECT_NE(text.find("\n  " + std::string(option.name)), std::string::npos) << option.name;
    EXPECT_NE(text.find("  " + std::string(option.help) + "\n"), std::string::npos) << option.name;
  }
}

TEST(HelpTest, ShowsEveryQuestionAndExitStatus) {
  std::ostringstream help;
  writeHelp(help);
  for (const QuestionRow& question : questionTable()) {
    EXPECT_NE(help.str().find("\n  " + formOf(question) + " "), std::string::npos) << question.name;
  }
  for (const ExitStatusRow& row : exitStatuses()) {
    const std::string line = "\n  " + std::to_string(row.status) + " ";
    EXPECT_NE(help.str().find(line), std::string::npos) << row.status;
    EXPECT_NE(help.str().find("  " + std::string(row.meaning) + "\n"), std::string::npos) << row.meaning;
  }
}

// A failure without an exit status of its own would end as another one.
TEST(ExitStatusTest, EveryFailureHasAStatusAndAWord) {
  std::set<int> statuses;
  std::set<std::string_view> words;
  for (const ExitStatusRow& row : exitStatuses()) {
    EXPECT_EQ(exitStatusOf(row.code), row.status);
    statuses.insert(row.status);
    words.insert(codeWord(row.code));
  }
  EXPECT_EQ(statuses, (std::set<int>{0, 64, 65, 66, 69, 70, 73, 74, 75, 77, 78, 130}));
  EXPECT_EQ(words.size(), exitStatuses().size());
}

TEST(HelpTest, OfACommandShowsItsArgumentsAndTheOptionsThatItTakes) {
  EXPECT_TRUE(helpOf(*findCommand("limits"))
                  .starts_with("Show the open files limit, adjust it to the current values, or reset it.\n\n"
                               "Usage: norvikctl [OPTIONS] limits [STEP]\n\n"
                               "Arguments:\n  STEP  adjust or reset\n\nOptions:\n  --root DIR "));
  EXPECT_NE(helpOf(*findCommand("get")).find("norvikctl [OPTIONS] get NAME...\n"), std::string::npos);
  EXPECT_NE(helpOf(*findCommand("stop")).find("norvikctl [OPTIONS] stop\n\nOptions:"), std::string::npos);
  EXPECT_EQ(helpOf(*findCommand("stop")).find("--dry-run"), std::string::npos);
  EXPECT_NE(helpOf(*findCommand("set")).find("--dry-run"), std::string::npos);
}

// A command that is added to the table with the handler of another one would run that one.
TEST(CommandTableTest, EveryCommandHasAHandlerOfItsOwn) {
  std::set<Handler> handlers;
  for (const Command& command : commands()) handlers.insert(command.run);
  EXPECT_EQ(handlers.size(), commands().size());
  EXPECT_EQ(handlers.count(nullptr), 0U);
  EXPECT_EQ(findCommand("watch")->run, &watch);
  EXPECT_EQ(findCommand("Watch"), nullptr);
  EXPECT_EQ(findCommand(""), nullptr);
}

TEST(DiagnosticTest, ControlCharactersAndWhatIsNoTextAreEscaped) {
  EXPECT_EQ(printable("a\x1b[31m\"\\"), "a\\x1b[31m\"\\");
  EXPECT_EQ(printable("\n\t\x7f"), "\\n\\t\\x7f");
  EXPECT_EQ(printable("\xc2\x9b"
                      "31m\x9b\xff"),
            "\\xc2\\x9b31m\\x9b\\xff");
  EXPECT_EQ(printable("Gr\xc3\xbc\xc3\x9f"
                      "e \xe2\x82\xac"),
            "Gr\xc3\xbc\xc3\x9f"
            "e \xe2\x82\xac");
  EXPECT_EQ(printable(std::string_view("\0", 1)), "\\x00");
  std::ostringstream err;
  writeDiagnostic(err, "bad \"\r\".");
  EXPECT_EQ(err.str(), "norvikctl: bad \"\\r\".\n");
}

}  // namespace
}  // namespace norvik::command
