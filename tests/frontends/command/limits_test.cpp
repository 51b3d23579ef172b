// norvikctl limits: what is shown, and the two steps.
#include <gtest/gtest.h>

#include "tests/frontends/command/sandbox_run.h"

namespace norvik::command {
namespace {

class LimitsTest : public testing::Test {
 protected:
  SandboxRun box;
};

TEST_F(LimitsTest, ShowsNowAndTheNextStart) {
  const Result result = box.run({"limits"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out,
            "                           Now    At the next start\n"
            "Files for each program     10240  4096\n"
            "Files in the whole system  12288  8192\n\n"
            "\"norvikctl limits adjust\" raises the limits for the next start to the current ones.\n");
  const auto limits = box.json({"limits"});
  EXPECT_EQ(limits["now"], nlohmann::json({{"program", 10240}, {"system", 12288}}));
  EXPECT_EQ(limits["nextStart"], nlohmann::json({{"program", 4096}, {"system", 8192}}));
  EXPECT_EQ(limits["action"], "adjust");
}

TEST_F(LimitsTest, ShowsWhatItCanWhileTheLockStaysClosed) {
  box.write("/.norvik/authorization", "refused\n");
  const Result result = box.run({"limits"});
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(result.out.find("Files for each program     not known  4096\n"), std::string::npos) << result.out;
  EXPECT_EQ(box.json({"limits"})["action"], "none");
}

TEST_F(LimitsTest, AdjustsAndResets) {
  const Result adjusted = box.run({"limits", "adjust", "--no-reboot"});
  EXPECT_EQ(adjusted.status, 0) << adjusted.err;
  EXPECT_EQ(adjusted.out.substr(0, adjusted.out.find("\n\n")),
            "Files for each program     4096 -> 10240\nFiles in the whole system  8192 -> 12288");
  EXPECT_NE(adjusted.out.find("       open files limit\n"), std::string::npos) << adjusted.out;
  EXPECT_NE(box.read("/etc/launchd.conf").find("limit maxfiles 10240 12288\n"), std::string::npos);
  EXPECT_EQ(box.json({"limits"})["action"], "reset");

  EXPECT_EQ(box.run({"limits", "reset", "--answer", "reset-limits=yes", "--no-reboot"}).status, 0);
  EXPECT_NE(box.read("/etc/launchd.conf").find("#limit maxfiles 10240 12288\n"), std::string::npos);
}

TEST_F(LimitsTest, AStepThatIsNotToBeTaken) {
  const Result below = box.run({"limits", "reset", "--answer", "reset-limits=yes"});
  EXPECT_EQ(below.status, 78);
  EXPECT_NE(below.err.find("can only be adjusted"), std::string::npos);

  ASSERT_EQ(box.run({"limits", "adjust", "--no-reboot"}).status, 0);
  const Result again = box.run({"limits", "adjust"});
  EXPECT_EQ(again.status, 0);
  EXPECT_EQ(
      again.out,
      "The limits for the next start are already as high as the current ones.\nThere was nothing to save.\n");

  ASSERT_EQ(box.run({"limits", "reset", "--answer", "reset-limits=yes", "--no-reboot"}).status, 0);
  EXPECT_NE(box.run({"limits", "reset"}).out.find("The next start already uses the default limits."),
            std::string::npos);
}

TEST_F(LimitsTest, ADeclinedResetLeavesTheLimits) {
  ASSERT_EQ(box.run({"limits", "adjust", "--no-reboot"}).status, 0);
  const Result result = box.run({"limits", "reset", "--answer", "reset-limits=no"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "The limits stay as they are.\nThere was nothing to save.\n");
  EXPECT_EQ(box.json({"limits"})["action"], "reset");
}

TEST_F(LimitsTest, TheSystemsValuesMustBeKnown) {
  box.write("/.norvik/kernel", "");
  const Result result = box.run({"limits", "adjust", "--no-reboot"});
  EXPECT_EQ(result.status, 78);
  EXPECT_NE(result.err.find("the current limits of the system are not known."), std::string::npos);
}

}  // namespace
}  // namespace norvik::command
