// The command line itself: what is understood, and how a mistake is told.
#include <gtest/gtest.h>

#include "tests/frontends/command/sandbox_run.h"

namespace norvik::command {
namespace {

class CommandLineTest : public testing::Test {
 protected:
  // Everything here ends before the sandbox would be looked at.
  void expectFault(const Words& words, const std::string& sentence) const {
    const Result result = box.run(words);
    EXPECT_EQ(result.status, 64);
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find("norvikctl: " + sentence), std::string::npos) << result.err;
  }

  SandboxRun box;
};

TEST_F(CommandLineTest, HelpTellsEveryCommandAndOption) {
  const Result result = box.run({"--help"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  for (const char* word : {"status", "show", "get", "set", "start", "stop", "restart", "limits", "displays",
                           "access", "watch", "completion", "--root", "--json", "--answer"}) {
    EXPECT_NE(result.out.find(std::string("  ") + word), std::string::npos) << word;
  }
}

TEST_F(CommandLineTest, HelpOfSetHasTheHelpTextsOfTheInterface) {
  const Result result = box.run({"set", "--help"});
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(
      result.out.find("nvk.port=VALUE, a whole number from 1 to 65535\n      Port number.\n      The port at "
                      "which Norvik clients reach this computer"),
      std::string::npos);
  // The panel hides this one.
  EXPECT_EQ(result.out.find("system.opengl"), std::string::npos);
}

TEST_F(CommandLineTest, Version) {
  const Result result = box.run({"--version"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out.substr(0, 10), "norvikctl ");
}

TEST_F(CommandLineTest, AWrongCommandOrOptionProposesTheNearest) {
  expectFault({"strat"}, "no command is named \"strat\". Did you mean \"start\"?");
  expectFault({"xyzzyx"}, "no command is named \"xyzzyx\".\n");
  expectFault({"status", "--jsno"}, "no option is named \"--jsno\". Did you mean \"--json\"?");
  expectFault({"limits", "adjsut"}, "limits takes adjust or reset, not \"adjsut\". Did you mean \"adjust\"?");
  expectFault({"--answer", "defualt", "limits", "reset"},
              "--answer takes default, alternate or other, not \"defualt\". Did you mean \"default\"?");
}

TEST_F(CommandLineTest, TooFewAndTooManyWords) {
  expectFault({}, "a command is missing.");
  expectFault({"get"}, "NAME is required");
  expectFault({"set"}, "NAME=VALUE is required");
  expectFault({"status", "nvk.port"}, "\"nvk.port\" is one word too many.");
  expectFault({"start", "stop"}, "");
  expectFault({"completion", "fish"}, "there is completion for bash only, not for \"fish\".");
}

TEST_F(CommandLineTest, ARootThatIsNoFolder) {
  const Result result = runProgram("norvikctl", {"--root", "/no/such/folder", "status"}, box.beside(""));
  EXPECT_EQ(result.status, 64);
  EXPECT_EQ(result.err, "norvikctl: there is no folder \"/no/such/folder\".\n");
}

TEST_F(CommandLineTest, AnUnknownNameProposesTheNearest) {
  expectFault({"get", "nvk.prot"}, "no setting is named \"nvk.prot\". Did you mean \"nvk.port\"?");
  expectFault({"set", "notify.nwes=on"},
              "no setting is named \"notify.nwes\". Did you mean \"notify.news\"?");
  expectFault({"show", "Conections"},
              "no page or setting is named \"Conections\". Did you mean \"Connections\"?");
  expectFault({"set", "system.opengl=2"}, "no setting is named \"system.opengl\".");
}

TEST_F(CommandLineTest, OptionsMayFollowTheCommand) {
  const Result result = runProgram(
      "norvikctl", {"get", "nvk.sound", "--json", "--root", box.folder().string()}, box.beside(""));
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "{\n  \"nvk.sound\": true\n}\n");
}

}  // namespace
}  // namespace norvik::command
