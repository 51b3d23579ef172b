// Questions: answered by an option, by a person at a terminal, or by nobody, which ends the command with
// nothing changed.
#include <gtest/gtest.h>

#include "tests/frontends/command/sandbox_run.h"

namespace norvik::command {
namespace {

constexpr const char* kCompositing = "system.compositing.disable=on";

class QuestionsTest : public testing::Test {
 protected:
  void expectNothingChanged(const Words& words, const std::string& title, const std::string& name) const {
    const auto before = box.files();
    const Result result = box.run(words);
    EXPECT_EQ(result.status, 64);
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find("the question \"" + title + "\" needs an answer: use --answer " + name + "="),
              std::string::npos)
        << result.err;
    EXPECT_NE(result.err.find("Nothing was changed."), std::string::npos);
    EXPECT_EQ(box.files(), before);
  }
  std::string compositing() const { return box.run({"get", "system.compositing.disable"}).out; }
  bool rebooted() const { return !box.read("/.norvik/log/reboot.log").empty(); }

  SandboxRun box;
};

TEST_F(QuestionsTest, WithoutATerminalNothingIsChanged) {
  expectNothingChanged({"set", kCompositing}, "Disabling Quartz Extreme acceleration", "graphics");
  expectNothingChanged({"set", "connect.multiuser=on"}, "Multiuser Mode Adjustment", "limits");
}

// The question only comes up when all is saved, and is foreseen.
TEST_F(QuestionsTest, AQuestionThatComesAfterSavingEndsTheCommandBefore) {
  ASSERT_EQ(box.run({"--answer", "graphics=yes", "--no-reboot", "set", kCompositing}).status, 0);
  expectNothingChanged({"set", "system.compositing.disable=off", "user.mouse.swap=on"}, "Reboot is required",
                       "restart");
  expectNothingChanged({"limits", "adjust"}, "Reboot is required", "restart");
}

// The word that declines one of them would restart the computer as the answer to the other.
TEST_F(QuestionsTest, OneWordNeverAnswersTwoQuestions) {
  expectNothingChanged({"--answer", "limits=no", "set", "connect.multiuser=on", kCompositing},
                       "Disabling Quartz Extreme acceleration", "graphics");
  expectNothingChanged({"--answer", "graphics=yes", "set", kCompositing}, "Reboot is required", "restart");
  const auto before = box.files();
  const Result result = box.run({"--answer", "alternate", "set", "connect.multiuser=on", kCompositing});
  EXPECT_EQ(result.status, 64);
  EXPECT_NE(result.err.find("--answer takes a question's name and its answer, not \"alternate\"."),
            std::string::npos)
      << result.err;
  EXPECT_EQ(box.files(), before);
  EXPECT_FALSE(rebooted());
}

TEST_F(QuestionsTest, AnswersToSeveralQuestions) {
  const auto outcome = box.json({"--answer", "limits=no", "--answer", "graphics=yes", "--answer",
                                 "restart=later", "set", "connect.multiuser=on", kCompositing});
  EXPECT_EQ(outcome["ok"], true) << outcome;
  std::vector<std::string> answers;
  for (const auto& question : outcome["questions"]) {
    answers.push_back(question["name"].get<std::string>() + "=" + question["answer"].get<std::string>());
  }
  EXPECT_EQ(answers, (std::vector<std::string>{"limits=no", "graphics=yes", "restart=later"}));
  EXPECT_EQ(box.read("/etc/launchd.conf").find("limit maxfiles 10240 12288"), std::string::npos);
  EXPECT_EQ(compositing(), "on\n");
  EXPECT_FALSE(rebooted());
}

TEST_F(QuestionsTest, AnAnswerToAQuestionThatIsNotAskedDoesNothing) {
  EXPECT_EQ(box.run({"--reboot", "--answer", "limits=yes", "set", "nvk.sound=off"}).status, 0);
  EXPECT_FALSE(rebooted());
}

TEST_F(QuestionsTest, TheAnswersByOption) {
  const Result result = box.run({"--answer", "graphics=yes", "--no-reboot", "set", kCompositing});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_NE(result.out.find("Asked  graphics=yes (Disabling Quartz Extreme acceleration: Yes, Proceed)\n"
                            "       restart=later (Reboot is required: No, I'll Reboot Later)\n"),
            std::string::npos)
      << result.out;
  EXPECT_EQ(compositing(), "on\n");
  EXPECT_FALSE(rebooted());
}

TEST_F(QuestionsTest, AnAnswerThatDeclines) {
  const Result result = box.run({"--answer", "graphics=no", "set", kCompositing});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "system.compositing.disable stays off.\nThere was nothing to save.\n");
  EXPECT_EQ(compositing(), "off\n");
}

TEST_F(QuestionsTest, OnlyTheAnswerNowRestarts) {
  ASSERT_EQ(box.run({"--answer", "graphics=yes", "--no-reboot", "set", kCompositing}).status, 0);
  const auto outcome = box.json({"--reboot", "set", "system.compositing.disable=off"});
  EXPECT_EQ(outcome["questions"][0],
            nlohmann::json({{"name", "restart"},
                            {"title", "Reboot is required"},
                            {"answers", {"later", "now"}},
                            {"buttons", {"No, I'll Reboot Later", "Yes, Reboot Now"}},
                            {"answer", "now"}}));
  EXPECT_TRUE(eventually([&] { return rebooted(); }));
}

TEST_F(QuestionsTest, MultiUserModeOffersTheOpenFilesLimit) {
  const auto outcome = box.json({"--answer", "limits=yes", "--no-reboot", "set", "connect.multiuser=on"});
  EXPECT_EQ(outcome["questions"].size(), 2U);
  EXPECT_EQ(outcome["saved"], nlohmann::json({"server settings", "open files limit"}));
  EXPECT_NE(box.read("/etc/launchd.conf").find("limit maxfiles 10240 12288\n"), std::string::npos);
}

TEST_F(QuestionsTest, ADryRunShowsTheQuestionsAndWhatFollowsFromTheDefaultAnswer) {
  const auto before = box.files();
  const Result result = box.run({"set", kCompositing, "--dry-run"});
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(
      result.out.find("Would ask    graphics=yes (Disabling Quartz Extreme acceleration: Yes, Proceed)\n"
                      "             restart=later (Reboot is required: No, I'll Reboot Later)\n"),
      std::string::npos)
      << result.out;
  EXPECT_EQ(box.files(), before);
}

TEST_F(QuestionsTest, APersonIsAskedAtTheTerminal) {
  const Result result = box.runAtTerminal({"set", kCompositing}, "7\nyes\n\n");
  EXPECT_EQ(result.status, 0) << result.out;
  EXPECT_NE(result.out.find("  1  Yes, Proceed  (default)\n  2  No, Thank You\n\nYour choice [1]: "),
            std::string::npos)
      << result.out;
  EXPECT_EQ(countOf(result.out, "Please type a number from 1 to 2."), 1);
  EXPECT_NE(result.out.find("Reboot is required: No, I'll Reboot Later"), std::string::npos);
  EXPECT_EQ(compositing(), "on\n");
  EXPECT_FALSE(rebooted());
}

TEST_F(QuestionsTest, APersonDeclines) {
  const Result result = box.runAtTerminal({"set", kCompositing}, "2\n");
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(result.out.find("system.compositing.disable stays off."), std::string::npos) << result.out;
  EXPECT_EQ(compositing(), "off\n");
}

TEST_F(QuestionsTest, APersonIsAskedOnlyWhatNoOptionAnswers) {
  const Result result = box.runAtTerminal({"--no-reboot", "set", kCompositing}, "1\n");
  EXPECT_EQ(result.status, 0) << result.out;
  EXPECT_EQ(countOf(result.out, "Your choice"), 1);
  EXPECT_EQ(compositing(), "on\n");
}

TEST_F(QuestionsTest, APersonWhoEndsTheInputChangesNothing) {
  const auto before = box.files();
  const Result result = box.runAtTerminal({"set", kCompositing}, "\x04");
  EXPECT_EQ(result.status, 64);
  EXPECT_NE(result.out.find("Nothing was changed."), std::string::npos);
  EXPECT_EQ(box.files(), before);
}

}  // namespace
}  // namespace norvik::command
