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
  const auto line = parseCommandLine(words, fault);
  EXPECT_EQ(fault, "");
  return line.value_or(CommandLine());
}

std::string faultOf(const Line& words) {
  std::string fault;
  EXPECT_FALSE(parseCommandLine(words, fault).has_value());
  return fault;
}

std::string helpOf(const Command& command) {
  std::ostringstream text;
  writeHelp(text, command, {});
  return text.str();
}

TEST(CommandLineTest, ACommandItsArgumentsAndTheOptions) {
  const CommandLine line =
      parsed({"--root", "box", "set", "nvk.port=1", "--answer=other", "nvk.sound=on", "--dry-run", "--json"});
  EXPECT_EQ(line.command, findCommand("set"));
  EXPECT_EQ(line.arguments, (Line{"nvk.port=1", "nvk.sound=on"}));
  EXPECT_EQ(line.root, "box");
  EXPECT_EQ(line.answer, -1);
  EXPECT_TRUE(line.dryRun);
  EXPECT_TRUE(line.json);
}

TEST(CommandLineTest, WithoutOptions) {
  const CommandLine line = parsed({"status"});
  EXPECT_FALSE(line.root.has_value());
  EXPECT_FALSE(line.answer.has_value());
  EXPECT_FALSE(line.json || line.dryRun || line.help || line.version);
}

TEST(CommandLineTest, EveryOptionMayPrecedeOrFollowTheCommand) {
  for (const Option& option : options()) {
    Line words{std::string(option.name)};
    if (!option.value.empty()) words.emplace_back(option.choices.empty() ? "x" : option.choices[0]);
    Line before = words, after{"set", "a=b"};
    before.insert(before.end(), {"set", "a=b"});
    after.insert(after.end(), words.begin(), words.end());
    for (const Line& line : {before, after}) {
      EXPECT_EQ(parsed(line).command, findCommand("set")) << option.name;
      EXPECT_EQ(parsed(line).arguments, Line{"a=b"}) << option.name;
    }
  }
  EXPECT_TRUE(parsed({"-h"}).help);
  EXPECT_TRUE(parsed({"--dry-run", "set", "a=b"}).dryRun);
}

TEST(CommandLineTest, TheAnswersInTheOrderOfTheButtons) {
  EXPECT_EQ(parsed({"--answer", "default", "start"}).answer, 1);
  EXPECT_EQ(parsed({"--answer", "alternate", "start"}).answer, 0);
  EXPECT_EQ(parsed({"--answer", "other", "start"}).answer, -1);
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
  EXPECT_EQ(faultOf({"--answer", "defualt", "limits", "reset"}),
            "--answer takes default, alternate or other, not \"defualt\". Did you mean \"default\"?");
  EXPECT_EQ(faultOf({"completion", "zsh"}), "completion takes bash, not \"zsh\".");
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

TEST(CommandLineTest, OnlySetTakesADryRun) {
  for (const Command& command : commands()) {
    Line words{"--dry-run", std::string(command.name)};
    const ArgumentDescription& argument = command.argument;
    if (argument.least > 0) words.emplace_back(argument.choices.empty() ? "a=b" : argument.choices[0]);
    if (command.name == "set") {
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
