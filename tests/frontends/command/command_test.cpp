// The program and its surroundings: help, names that are unknown, roots that are no sandbox, and output that
// cannot be written.
#include <gtest/gtest.h>

#include "tests/frontends/command/sandbox_run.h"

namespace norvik::command {
namespace {

class CommandTest : public testing::Test {
 protected:
  void expectFault(const Words& words, const std::string& sentence) const {
    const Result result = box.run(words);
    EXPECT_EQ(result.status, 64);
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find("norvikctl: " + sentence), std::string::npos) << result.err;
  }
  // norvikctl as a shell runs it, with redirections behind the words.
  Result inShell(const std::string& rest) const {
    const std::string command = builtProgram("norvikctl") + " --root " + box.folder().string();
    return runProgram("/bin/sh", {"-c", command + " " + rest}, box.beside(""));
  }

  SandboxRun box;
};

TEST_F(CommandTest, AMistakeIsShownWithTheWayToTheHelp) {
  const Result result = box.run({"strat"});
  EXPECT_EQ(result.status, 64);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err,
            "norvikctl: unknown command \"strat\". Did you mean \"start\"?\nTry \"norvikctl --help\".\n");
}

TEST_F(CommandTest, HelpOfSetHasTheHelpTextsOfTheInterface) {
  const Result result = box.run({"set", "--help"});
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(
      result.out.find("nvk.port=VALUE, a whole number from 1 to 65535\n      Port number.\n      The port at "
                      "which Norvik clients reach this computer"),
      std::string::npos);
  // The panel hides this one.
  EXPECT_EQ(result.out.find("system.opengl"), std::string::npos);
  EXPECT_EQ(box.run({"--help", "set"}).out, result.out);
}

TEST_F(CommandTest, HelpAndVersion) {
  const Result help = box.run({"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(help.err, "");
  EXPECT_NE(help.out.find("\nCommands:\n"), std::string::npos);
  EXPECT_NE(box.run({"limits", "--help"}).out.find("limits [STEP]"), std::string::npos);
  const Result version = box.run({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_EQ(version.out.substr(0, 10), "norvikctl ");
}

TEST_F(CommandTest, ARootThatIsNoSandboxIsRefused) {
  const std::string folder = box.beside("folder").string(), missing = box.beside("missing").string();
  std::filesystem::create_directory(folder);
  const auto run = [&](const std::string& root) {
    return runProgram("norvikctl", {"--root", root, "set", "user.mouse.swap=on"}, box.beside(""));
  };
  EXPECT_EQ(run(missing).status, 64);
  EXPECT_EQ(run(missing).err, "norvikctl: no such directory: \"" + missing + "\".\n");
  EXPECT_EQ(run(folder).status, 64);
  EXPECT_EQ(run(folder).err, "norvikctl: \"" + folder + "\" is not a sandbox.\n");
  EXPECT_TRUE(std::filesystem::is_empty(folder));
  EXPECT_EQ(run("").status, 64);
  EXPECT_FALSE(std::filesystem::exists(box.beside("Library")));
}

TEST_F(CommandTest, AnUnknownNameProposesTheNearest) {
  expectFault({"get", "nvk.prot"}, "unknown setting \"nvk.prot\". Did you mean \"nvk.port\"?");
  expectFault({"set", "notify.nwes=on"}, "unknown setting \"notify.nwes\". Did you mean \"notify.news\"?");
  expectFault({"show", "Conections"},
              "unknown page or setting \"Conections\". Did you mean \"Connections\"?");
  expectFault({"set", "system.opengl=2"}, "unknown setting \"system.opengl\".");
}

TEST_F(CommandTest, ControlCharactersOfTheCommandLineAreEscaped) {
  const std::string red = "a\x1b[31m", shown = "\"a\\x1b[31m\"";
  expectFault({red}, "unknown command " + shown);
  expectFault({"--" + red}, "unknown option \"--a\\x1b[31m\"");
  expectFault({"status", red}, "unexpected argument " + shown);
  expectFault({"limits", red}, "limits takes adjust or reset, not " + shown);
  expectFault({"get", red}, "unknown setting " + shown);
  expectFault({"show", red}, "unknown page or setting " + shown);
  expectFault({"set", red + "=1"}, "unknown setting " + shown);
  EXPECT_NE(box.run({"set", "nvk.port=" + red}).err.find("not " + shown), std::string::npos);
  EXPECT_NE(runProgram("norvikctl", {"--root", red, "status"}, box.beside("")).err.find(shown),
            std::string::npos);
}

TEST_F(CommandTest, OutputThatCannotBeWritten) {
  for (const char* words : {"status", "status --json", "get nvk.port", "show", "--help", "set --help",
                            "--version", "completion bash", "limits", "watch"}) {
    for (const char* redirection : {" >/dev/full", " >&-"}) {
      const Result result = inShell(std::string(words) + redirection);
      EXPECT_EQ(result.status, 74) << words << redirection;
      EXPECT_EQ(result.err, "norvikctl: the output could not be written.\n");
    }
  }
}

// What was changed stays changed, and no file is opened in the place of a closed stream.
TEST_F(CommandTest, AChangeWhoseOutputCannotBeWritten) {
  EXPECT_EQ(inShell("set nvk.sound=off >&-").status, 74);
  EXPECT_EQ(inShell("set nvk.printing=off <&- >&- 2>&-").status, 74);
  EXPECT_EQ(box.run({"get", "nvk.sound", "nvk.printing"}).out, "off\noff\n");
  EXPECT_EQ(inShell("get unknown >/dev/full").status, 64);
}

TEST_F(CommandTest, OptionsMayPrecedeOrFollowTheCommand) {
  const Result after = runProgram(
      "norvikctl", {"get", "nvk.sound", "--json", "--root", box.folder().string()}, box.beside(""));
  EXPECT_EQ(after.status, 0);
  EXPECT_EQ(nlohmann::json::parse(after.out)["values"], nlohmann::json({{"nvk.sound", true}}));
  const Result before = box.run({"--dry-run", "set", "nvk.sound=off"});
  EXPECT_EQ(before.status, 0);
  EXPECT_NE(before.out.find("Would save   server settings\n"), std::string::npos) << before.out;
  EXPECT_EQ(box.run({"get", "nvk.sound"}).out, "on\n");
}

}  // namespace
}  // namespace norvik::command
