// Changes at once, and changes that are cut off: nobody's change is lost without a word, and no file is left
// empty or torn. A few rounds, and many where NORVIK_LONG is set.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <random>
#include <thread>

#include "tests/frontends/command/sandbox_run.h"

namespace norvik::command {
namespace {

int rounds(int usual, int many) {
  return std::getenv("NORVIK_LONG") != nullptr ? many : usual;
}

std::string assignment(const char* name, bool on) {
  return std::string(name) + (on ? "=on" : "=off");
}

class AtOnceTest : public testing::Test {
 protected:
  SandboxRun box;
};

// The wishes are for the same two files, one of which tools install and one of which is written in place.
TEST_F(AtOnceTest, OfTwoChangesNoneIsLostWithoutAWord) {
  bool on = false;
  for (int round = rounds(20, 200); round > 0; --round, on = !on) {
    RunningProgram one =
        box.start({"set", assignment("nvk.sound", on), assignment("user.mouse.swap", on)}, "one");
    RunningProgram two =
        box.start({"set", assignment("rdp.sound", on), assignment("user.image.defaults", on)}, "two");
    const int first = one.status(kProgramLimit), second = two.status(kProgramLimit);
    const std::string wished = on ? "on\non\n" : "off\noff\n";
    EXPECT_TRUE(first == 0 || first == 75) << first;
    EXPECT_TRUE(second == 0 || second == 75) << second;
    if (first == 0) {
      EXPECT_EQ(box.run({"get", "nvk.sound", "user.mouse.swap"}).out, wished) << round;
    }
    if (second == 0) {
      EXPECT_EQ(box.run({"get", "rdp.sound", "user.image.defaults"}).out, wished) << round;
    }
    ASSERT_TRUE(box.areFilesWhole()) << round;
  }
}

// At times from before the files are read until after the tools have ended.
TEST_F(AtOnceTest, AKillAtAnyTimeLosesNothingElse) {
  const auto begin = std::chrono::steady_clock::now();
  ASSERT_EQ(
      box.run({"set", "rdp.port=7999", "user.image.defaults=off", "user.image.depth=8", "notify.low=off"})
          .status,
      0);
  const auto length =
      std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - begin);
  std::mt19937 random(7);
  std::uniform_int_distribution<int64_t> microseconds(0, length.count());
  bool on = false;
  for (int round = rounds(40, 1000); round > 0; --round, on = !on) {
    RunningProgram set = box.start({"set", assignment("nvk.sound", on), assignment("user.mouse.swap", on),
                                    assignment("notify.news", on)},
                                   "set");
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
    set.send(SIGKILL);
    set.ending();
    ASSERT_TRUE(box.areFilesWhole()) << round;
    ASSERT_EQ(box.run({"get", "rdp.port", "user.image.depth", "notify.low"}).out, "7999\n8\noff\n") << round;
  }
  EXPECT_EQ(box.run({"set", "nvk.sound=off", "user.mouse.swap=on", "notify.news=off"}).status, 0);
  EXPECT_EQ(box.run({"get", "nvk.sound", "user.mouse.swap", "notify.news"}).out, "off\non\noff\n");
}

}  // namespace
}  // namespace norvik::command
