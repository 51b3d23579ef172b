// norvik-scenario as a person uses it: what it prints and writes, and its exit status. Runs the built program
// on files in a temporary folder.
#include <gtest/gtest.h>

#include <string>

#include "tests/support/files.h"
#include "tests/support/program.h"
#include "tests/support/temporary_folder.h"

namespace norvik {
namespace {

using Outcome = ProgramResult;

class ScenarioRunner : public testing::Test {
 protected:
  void write(const std::string& name, const std::string& text) { writeFile(folder.path() / name, text); }
  std::string read(const std::string& name) { return contentOf(folder.path() / name); }

  // Runs the program in the folder, with the arguments of a shell command.
  Outcome run(const std::string& arguments, const std::string& program = NORVIK_SCENARIO_PROGRAM) {
    return runProgram({"/bin/sh", "-c", "'" + program + "' " + arguments}, {.folder = folder.path()});
  }

  // What the program says about a malformed scenario with these lines.
  std::string complaint(const std::string& text) {
    write("bad", text);
    const Outcome outcome = run("--print bad");
    EXPECT_EQ(outcome.status, 2) << text;
    EXPECT_EQ(outcome.output, "") << text;
    return outcome.errors;
  }

  TemporaryFolder folder;
};

TEST_F(ScenarioRunner, ComparesEachFileInAProcessOfItsOwn) {
  // The first address found is kept for the life of a process.
  write("one", "> hostname \"one.example.com\"\n> call get_net_addr 255\n1 \"one.example.com\"\n> awake\n");
  write("two", "> awake\n> main-pane\n1\n");
  const Outcome outcome = run("one two");
  EXPECT_EQ(outcome.output, "ok one\nok two\n2 passed, 0 failed\n");
  EXPECT_EQ(outcome.errors, "");
  EXPECT_EQ(outcome.status, 0);
}

TEST_F(ScenarioRunner, ShowsADifferenceAsAUnifiedDiff) {
  write("same", "> timer\nnone\n");
  write("other", "# a\n\n# b\n# c\n> timer\nrunning\n> clock\n0\n# d\n# e\n# f\n");
  const Outcome outcome = run("same other");
  EXPECT_EQ(outcome.output,
            "ok same\nnot ok other\n--- other\n+++ other (actual)\n@@ -3,7 +3,7 @@\n # b\n # c\n > "
            "timer\n-running\n"
            "+none\n > clock\n 0\n # d\n1 passed, 1 failed\n");
  EXPECT_EQ(outcome.status, 1);
}

TEST_F(ScenarioRunner, SeparatesHunksFarFromEachOther) {
  std::string text = "> clock\n1\n";
  for (int i = 0; i < 7; ++i) text += "# " + std::to_string(i) + "\n";
  write("far", text + "> timer\n");
  EXPECT_EQ(run("far").output,
            "not ok far\n--- far\n+++ far (actual)\n@@ -1,5 +1,5 @@\n > clock\n-1\n+0\n # 0\n # 1\n # 2\n"
            "@@ -8,3 +8,4 @@\n # 5\n # 6\n > timer\n+none\n0 passed, 1 failed\n");
}

TEST_F(ScenarioRunner, UnexpectedOutputDiffers) {
  write("silent", "> awake\n> timer\n");
  const Outcome outcome = run("silent");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_NE(outcome.output.find("+running interval=0.25"), std::string::npos);
}

TEST_F(ScenarioRunner, PrintsTheFileWithItsActualOutput) {
  const std::string text =
      "# kept\n\n> file \"/tmp/x\" <<END\n> no command\nEND\nstale\n\n> cat \"/tmp/x\"\nstale\nstale\n# kept";
  write("file", text);
  const Outcome outcome = run("--print file");
  EXPECT_EQ(outcome.output,
            "# kept\n\n> file \"/tmp/x\" <<END\n> no command\nEND\n\n> cat \"/tmp/x\"\n\"> no "
            "command\\n\"\n# kept\n");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(read("file"), text);
}

TEST_F(ScenarioRunner, UpdatesOutputLinesAlone) {
  write("one", "# kept\n> timer\nstale\n\n> clock\n");
  write("two", "> clock\n0\n");
  const Outcome outcome = run("--update one two");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(read("one"), "# kept\n> timer\nnone\n\n> clock\n0\n");
  EXPECT_EQ(read("two"), "> clock\n0\n");
  EXPECT_EQ(run("one two").status, 0);
}

TEST_F(ScenarioRunner, UpdatesNoMalformedFile) {
  const std::string text = "> timer\nstale\n> no-such-command\n";
  write("bad", text);
  EXPECT_EQ(run("--update bad").status, 2);
  EXPECT_EQ(read("bad"), text);
}

TEST_F(ScenarioRunner, AMalformedFileOutweighsOneThatDiffers) {
  write("bad", "> nonsense\n");
  write("other", "> timer\n");
  write("same", "> timer\nnone\n");
  const Outcome outcome = run("bad other same");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_NE(outcome.output.find("not ok bad\n"), std::string::npos);
  EXPECT_NE(outcome.output.find("1 passed, 2 failed\n"), std::string::npos);
  EXPECT_EQ(outcome.errors.substr(0, 7), "bad:1: ");
}

TEST_F(ScenarioRunner, ProposesTheNearestKnownWord) {
  EXPECT_EQ(complaint("# a\n> awake\n> shwo ib_button_Auth\n"),
            "bad:3: unknown command \"shwo\"; did you mean \"show\"?\n");
  EXPECT_EQ(complaint("> awake\n> show ib_button_Aply\n"),
            "bad:2: unknown control \"ib_button_Aply\"; did you mean \"ib_button_Apply\"?\n");
  EXPECT_EQ(complaint("> create\n> field m_serverPids\n"),
            "bad:2: unknown field \"m_serverPids\"; did you mean \"m_serverPid\"?\n");
  EXPECT_EQ(complaint("> create\n> accessor new_admin_nvkPorts\n"),
            "bad:2: unknown accessor \"new_admin_nvkPorts\"; did you mean \"new_admin_nvkPort\"?\n");
  EXPECT_EQ(complaint("> call nvkd_pip\n"),
            "bad:1: unknown operation \"nvkd_pip\"; did you mean \"nvkd_pid\"?\n");
  EXPECT_EQ(complaint("> fail open-raed \"/tmp/x\"\n"),
            "bad:1: unknown file operation \"open-raed\"; did you mean \"open-read\"?\n");
  EXPECT_EQ(complaint("> trace +slep\n"), "bad:1: unknown kind \"slep\"; did you mean \"sleep\"?\n");
}

TEST_F(ScenarioRunner, SaysWhatIsWrongAndWhere) {
  const struct {
    const char* text;
    const char* complaint;
  } kCases[] = {
      {"> pid many\n", "bad:1: expected a whole number, found many\n"},
      {"> pid \"7\"\n", "bad:1: expected a whole number, found \"7\"\n"},
      {"> daemon 99999999999\n", "bad:1: expected a whole number from 0 to 2147483647, found 99999999999\n"},
      {"> window 800\n", "bad:1: expected a number, found the end of the command\n"},
      {"> window 800 inf\n", "bad:1: expected a number, found inf\n"},
      {"> cat /tmp/x\n", "bad:1: expected a text in double quotes, found /tmp/x\n"},
      {"> timer now\n", "bad:1: expected the end of the command, found now\n"},
      {"> timer <<END\nEND\n", "bad:1: the command takes no lines below it\n"},
      {"> prints \"/bin/x\"\n", "bad:1: expected lines below the command, after <<END\n"},
      {"> file \"/tmp/x\" <<END\nx\n", "bad:1: the lines below the command do not end with a line END\n"},
      {"> cat \"/tmp/x\n", "bad:1: a text in double quotes does not end\n"},
      {"> cat \"\\q\"\n", "bad:1: unknown escape \"\\q\"\n"},
      {"> cat \"\\x4\"\n", "bad:1: unknown escape \"\\x4\"\"\n"},
      {"> cat \"a\"b\n", "bad:1: a space is missing after a text in double quotes\n"},
      {"> cat a\"b\"\n", "bad:1: a space is missing before a text in double quotes\n"},
      {">awake\n", "bad:1: a command begins with \"> \"\n"},
      {"# x\n\nawake\n", "bad:3: output without a command before it\n"},
      {"> \n", "bad:1: expected a word without quotes, found the end of the command\n"},
      {"> show ib_button_Auth\n", "bad:1: there is no pane\n"},
      {"> create\n> pane 2\n", "bad:2: there is no pane 2\n"},
      {"> create\n> dealloc\n> pane 1\n", "bad:3: there is no pane 1\n"},
      {"> create\n> set ib_user_chkbox_imgDefs 2\n",
       "bad:2: expected a whole number from -1 to 1, found 2\n"},
      {"> create\n> set ib_button_Auth 1\n", "bad:2: ib_button_Auth has no value to set\n"},
      {"> create\n> call authorize YES MAYBE\n", "bad:2: expected YES or NO, found MAYBE\n"},
      {"> kill-error 7 ESRCH\n", "bad:1: expected EPERM; use dead for a process that does not exist\n"},
      {"> process 7 \"APP\" \"nvka\" none\n",
       "bad:1: a type or creator has four characters, found \"APP\"\n"},
      {"> plist \"/tmp/x\" <<END\nA integer one\nEND\n",
       "bad:1: expected PATH TYPE VALUE, found A integer one\n"},
      {"> plist \"/tmp/x\" <<END\n1 boolean true\nEND\n",
       "bad:1: the elements of an array must be numbered from 0 without gaps\n"},
      {"> plist \"/tmp/x\" <<END\nA boolean true\nA/B boolean true\nEND\n",
       "bad:1: there is a value above A/B\n"},
      {"> plist \"/tmp/x\" <<END\nA/B boolean true\nA boolean true\nEND\n",
       "bad:1: there are values below A\n"},
  };
  for (const auto& [text, expected] : kCases) EXPECT_EQ(complaint(text), expected);
}

TEST_F(ScenarioRunner, AnAlertWithoutAnAnswerIsMalformed) {
  EXPECT_EQ(complaint("> awake\n> press ib_user_chkbox_mseSwap\n> unselect\n"),
            "bad:3: an alert without an answer\n");
}

// The runner over a pane that forgets operations, with scenarios whose output is as expected.
class ForgetfulScenario : public ScenarioRunner {
 protected:
  Outcome runForgetful(const std::string& arguments) {
    return run(arguments, NORVIK_FORGETFUL_SCENARIO_PROGRAM);
  }
  // What the runner says about a scenario with these lines after its first two; it must fail exactly if it
  // says something.
  std::string leftBehind(const std::string& text) {
    write("leaky", "> trace -launch\n> awake\n" + text);
    const Outcome outcome = runForgetful("leaky");
    const bool passes = outcome.errors.empty();
    EXPECT_EQ(outcome.status, passes ? 0 : 1) << text;
    EXPECT_EQ(outcome.output,
              passes ? "ok leaky\n1 passed, 0 failed\n" : "not ok leaky\n0 passed, 1 failed\n");
    return outcome.errors;
  }
};

TEST_F(ForgetfulScenario, FailsWithAFileThatIsNotClosed) {
  EXPECT_EQ(leftBehind(R"(> file "/etc/x" "a"
> forget fclose
> call loadStringsArray "/etc/x"
1 lines
"a"
> clock
0
> call saveStringsArray "/tmp/y" "a"
YES
)"),
            "leaky:5: left behind: the file \"/etc/x\"\nleaky:10: left behind: the file \"/tmp/y\"\n");
}

TEST_F(ForgetfulScenario, NamesEveryStreamOfOneFile) {
  EXPECT_EQ(leftBehind(R"(> file "/etc/x" ""
> forget fclose
> call loadStringsArray "/etc/x"
0 lines
> call loadStringsArray "/etc/x"
0 lines
)"),
            "leaky:5: left behind: the file \"/etc/x\"\nleaky:7: left behind: the file \"/etc/x\"\n");
}

TEST_F(ForgetfulScenario, FailsWithAPipeThatIsNotClosed) {
  EXPECT_EQ(leftBehind(R"(> call authorize YES NO
YES
> forget fclose
> call runCmdToBuf 9 "/usr/sbin/sysctl" "-n" "kern.maxfiles"
YES "12288\n"
)"),
            "leaky:6: left behind: the pipe of \"/usr/sbin/sysctl\" \"-n\" \"kern.maxfiles\"\n");
}

TEST_F(ForgetfulScenario, FailsWithATimerThatOutlivesItsPane) {
  EXPECT_EQ(leftBehind("> forget CFRelease\n> destroy\n"), "leaky:4: left behind: timer 1, not released\n");
  EXPECT_EQ(leftBehind("> forget CFRunLoopTimerInvalidate\n> dealloc\n"),
            "leaky:4: left behind: timer 1, not invalidated\n");
  EXPECT_EQ(leftBehind("> forget CFRelease\n> forget CFRunLoopTimerInvalidate\n> destroy\n> clock\n0\n"),
            "leaky:5: left behind: timer 1, neither invalidated nor released\n");
}

TEST_F(ForgetfulScenario, FailsWithAnAuthorizationThatNoPaneHolds) {
  EXPECT_EQ(leftBehind(R"(> call authorize YES NO
YES
> forget AuthorizationFree
> call deauthorize
> call authorize YES NO
YES
> destroy
)"),
            "leaky:6: left behind: authorization 2\nleaky:9: left behind: authorization 3\n");
}

// Whatever a scenario ends with, its panes are deallocated after it.
TEST_F(ForgetfulScenario, FailsWithWhatOutlivesItsPanes) {
  EXPECT_EQ(leftBehind("> call authorize YES NO\nYES\n> forget CFRelease\n> forget AuthorizationFree\n"),
            "leaky: at the end: left behind: authorization 2\n"
            "leaky: at the end: left behind: timer 1, not released\n");
}

TEST_F(ForgetfulScenario, PassesWithWhatItsPanesHold) {
  EXPECT_EQ(leftBehind(R"(> call authorize YES NO
YES
> call deauthorize
> call authorize YES NO
YES
> create
> call authorize YES NO
YES
> destroy
> create
> call authorize YES NO
YES
)"),
            "");
}

TEST_F(ForgetfulScenario, ShowsItsDifferencesTooAndIsNotUpdated) {
  const std::string text = "> create\n> file \"/x\" \"\"\n> forget fclose\n> call loadStringsArray \"/x\"\n";
  write("leaky", text);
  const Outcome compared = runForgetful("leaky");
  EXPECT_EQ(compared.status, 1);
  EXPECT_NE(compared.output.find("+0 lines\n"), std::string::npos) << compared.output;
  const Outcome printed = runForgetful("--print leaky");
  EXPECT_EQ(printed.status, 1);
  EXPECT_EQ(printed.output, text + "0 lines\n");
  EXPECT_EQ(runForgetful("--update leaky").status, 1);
  EXPECT_EQ(read("leaky"), text);
}

TEST_F(ScenarioRunner, AFileThatCannotBeReadIsMalformed) {
  const Outcome outcome = run("missing .");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.errors, "missing:1: cannot read the file\n.:1: cannot read the file\n");
}

TEST_F(ScenarioRunner, ShowsHowItIsCalled) {
  for (const char* arguments : {"", "--print", "--print a b", "--update", "--frobnicate a"}) {
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, 2) << arguments;
    EXPECT_EQ(outcome.errors.substr(0, 22), "usage: norvik-scenario") << arguments;
  }
}

TEST_F(ScenarioRunner, EscapesWhatDoesNotFitOnALine) {
  write("escapes",
        "> file \"/tmp/x\" \"\\n\\r\\t\\\"\\\\\\x00\\x1b\\x7F\\xc3\\xa9\\xc2\\x85\\xff\\xe2\\x82 "
        "\xe2\x82\xac\"\n> cat \"/tmp/x\"\n");
  EXPECT_EQ(run("--print escapes").output,
            "> file \"/tmp/x\" \"\\n\\r\\t\\\"\\\\\\x00\\x1b\\x7F\\xc3\\xa9\\xc2\\x85\\xff\\xe2\\x82 "
            "\xe2\x82\xac\"\n> cat \"/tmp/x\"\n"
            "\"\\n\\r\\t\\\"\\\\\\x00\\x1b\\x7f\xc3\xa9\\xc2\\x85\\xff\\xe2\\x82 \xe2\x82\xac\"\n");
}

}  // namespace
}  // namespace norvik
