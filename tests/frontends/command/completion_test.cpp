// The completion scripts at work in their shells: each is read by the shell, which is asked what it proposes.
#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>

#include "src/frontends/command/command_line.h"
#include "tests/frontends/command/sandbox_run.h"

namespace norvik::command {
namespace {

using Proposals = std::multiset<std::string>;

// With the name of the shell.
class CompletionTest : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    const std::string shell = GetParam();
    const Result printed = box.run({"completion", shell});
    ASSERT_EQ(printed.status, 0) << printed.err;
    std::ofstream(script()) << printed.out;
  }
  std::string script() const { return box.beside("script").string(); }
  // What the shell proposes for a line that was typed so far.
  Proposals proposed(const std::string& line) const {
    const Result asked =
        runProgram(std::string(NORVIK_ASK) + GetParam(), {script(), "norvikctl " + line}, box.beside(""));
    EXPECT_EQ(asked.err, "");
    Proposals words;
    std::istringstream lines(asked.out);
    for (std::string word; std::getline(lines, word);) words.insert(word);
    return words;
  }
  // The one path in the sandbox that is proposed for the start of one. A shell may propose its last part
  // only.
  std::string proposedPath(const std::string& line, const std::string& start) const {
    const Proposals words = proposed(line + box.folder().string() + start);
    if (words.size() != 1) return "";
    const std::filesystem::path word = *words.begin();
    const auto name = word.has_filename() ? word.filename() : word.parent_path().filename();
    return (std::filesystem::path(start).parent_path() / name).string();
  }
  // Where the shell proposes a pair as a whole, a pair; else its value.
  Proposals ofPair(const std::string& name, const Proposals& values) const {
    if (GetParam() != std::string("fish")) return values;
    Proposals pairs;
    for (const std::string& value : values) pairs.insert(name + "=" + value);
    return pairs;
  }

  SandboxRun box;
};

INSTANTIATE_TEST_SUITE_P(Shells, CompletionTest, testing::Values("bash", "zsh", "fish"),
                         [](const auto& shell) { return std::string(shell.param); });

TEST_P(CompletionTest, EveryCommandAndOption) {
  Proposals expectedCommands, expectedOptions;
  for (const Command& command : commands()) expectedCommands.emplace(command.name);
  for (const Option& option : options()) expectedOptions.emplace(option.name);
  EXPECT_EQ(proposed(""), expectedCommands);
  EXPECT_EQ(proposed("--json "), expectedCommands);
  EXPECT_EQ(proposed("--"), expectedOptions);
  EXPECT_EQ(proposed("sta"), (Proposals{"status", "start"}));
  EXPECT_EQ(proposed("status --j"), Proposals{"--json"});
}

TEST_P(CompletionTest, ArgumentsOfTheCommands) {
  EXPECT_EQ(proposed("limits "), (Proposals{"adjust", "reset"}));
  EXPECT_EQ(proposed("completion "), Proposals(std::begin(kShells), std::end(kShells)));
  EXPECT_EQ(proposed("show norv"), Proposals{"norvik-clients"});
  EXPECT_EQ(proposed("show nvk.s"), Proposals{"nvk.sound"});
  EXPECT_EQ(proposed("get nvk.s"), Proposals{"nvk.sound"});
  EXPECT_EQ(proposed("unset nvk.sound nvk.pr"), Proposals{"nvk.printing"});
  EXPECT_EQ(proposed("watch "), Proposals());
}

TEST_P(CompletionTest, NamesAndValuesOfSettings) {
  EXPECT_EQ(proposed("set nvk.p"), (Proposals{"nvk.port.custom=", "nvk.port=", "nvk.printing="}));
  EXPECT_EQ(proposed("set nvk.enabled="), ofPair("nvk.enabled", {"on", "off", "default"}));
  EXPECT_EQ(proposed("set nvk.sound=on notify.repeat=1"),
            ofPair("notify.repeat", {"15-minutes", "1-hour", "1-day"}));
  EXPECT_EQ(proposed("set connect.action=h"), ofPair("connect.action", {"hidden"}));
}

TEST_P(CompletionTest, ValuesOfOptions) {
  EXPECT_EQ(proposed("--answer r"), (Proposals{"reset-limits=", "restart="}));
  EXPECT_EQ(proposed("--answer restart="), ofPair("restart", {"later", "now"}));
  EXPECT_EQ(proposed("--answer restart=n"), ofPair("restart", {"now"}));
  EXPECT_EQ(proposed("--wait-lock "), Proposals());
  EXPECT_EQ(proposedPath("--root ", "/var/r"), "/var/run");
}

TEST_P(CompletionTest, Files) {
  EXPECT_EQ(proposedPath("validate ", "/etc/norvik/sv"), "/etc/norvik/svr.cfg");
}

// The value of an option is no command.
TEST_P(CompletionTest, BehindTheValueOfAnOption) {
  EXPECT_EQ(proposed("--answer limits=no set nvk.s"), Proposals{"nvk.sound="});
  EXPECT_EQ(proposed("--root show get nvk.s"), Proposals{"nvk.sound"});
}

TEST(CompletionWordsTest, TheProgramTakesWhatIsProposed) {
  const SandboxRun box;
  EXPECT_EQ(box.run({"set", "notify.show=15-minutes"}).status, 0);
  EXPECT_EQ(box.run({"get", "notify.show"}).out, "15 minutes\n");
  EXPECT_EQ(box.run({"show", "norvik-clients"}).status, 0);
}

}  // namespace
}  // namespace norvik::command
