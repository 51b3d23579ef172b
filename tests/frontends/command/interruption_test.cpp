// A change is not cut in two: an interruption while it is made ends the program when all of it is done.
#include <gtest/gtest.h>

#include <csignal>
#include <fstream>

#include "tests/frontends/command/sandbox_run.h"
#include "tests/support/files.h"

namespace norvik::command {
namespace {

namespace fs = std::filesystem;

class InterruptionTest : public testing::TestWithParam<int> {
 protected:
  // The tool that moves files says that it runs and waits until it may go on.
  void holdMove() const {
    fs::copy_file(box.folder() / "bin/mv", box.beside("mv"));
    box.replaceProgram("/bin/mv", "touch " + box.beside("moving").string() + "; while [ ! -e " +
                                      box.beside("go").string() + " ]; do sleep 0.01; done; exec " +
                                      box.beside("mv").string() + " \"$@\"");
  }
  bool isMoving() const {
    return eventually([&] { return fs::exists(box.beside("moving")); });
  }
  void letMove() const { std::ofstream(box.beside("go")) << ""; }

  SandboxRun box;
};

TEST_P(InterruptionTest, AChangeIsFinished) {
  holdMove();
  RunningProgram set = box.start({"set", "nvk.sound=off", "notify.news=off"}, "set");
  ASSERT_TRUE(isMoving());
  set.send(GetParam());
  letMove();
  EXPECT_EQ(set.status(), 0);
  EXPECT_EQ(
      contentOf(box.beside("set.err")),
      "norvikctl: warning: Interrupted while the change was being made; it was finished all the same.\n");
  EXPECT_NE(contentOf(box.beside("set")).find("Saved  server settings\n       notification settings\n"),
            std::string::npos);
  EXPECT_EQ(box.run({"get", "nvk.sound", "notify.news"}).out, "off\noff\n");
  EXPECT_TRUE(box.log("service.log", "apply"));
}

INSTANTIATE_TEST_SUITE_P(Signals, InterruptionTest, testing::Values(SIGINT, SIGTERM, SIGHUP),
                         [](const auto& each) { return std::string(sigabbrev_np(each.param)); });

TEST_F(InterruptionTest, AChangeWhoseReaderHasGone) {
  const std::string command = builtProgram("norvikctl") + " --root " + box.folder().string();
  const Result result = runProgram(
      "/bin/bash", {"-c", command + " set nvk.sound=off | true; exit ${PIPESTATUS[0]}"}, box.beside(""));
  EXPECT_EQ(result.status, 74);
  EXPECT_EQ(result.err, "norvikctl: the output could not be written.\n");
  EXPECT_EQ(box.run({"get", "nvk.sound"}).out, "off\n");
}

}  // namespace
}  // namespace norvik::command
