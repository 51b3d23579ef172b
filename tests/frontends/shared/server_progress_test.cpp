// How far a start and a stop have come, second by second, over the simulated computer.
#include "src/frontends/shared/server/server_progress.h"

#include <gtest/gtest.h>

#include "src/adapters/simulated/simulated_computer.h"
#include "tests/support/shipped_interface.h"

namespace norvik {
namespace {

class ServerProgressTest : public testing::Test {
 protected:
  ServerProgressTest() {
    installPlatform(&computer.platform());
    pane = std::make_unique<NVKServerPrefs>(interface);
    pane->awakeFromNib();
    pane->authorize(true, false);
    // The pane draws its label and then sleeps.
    computer.clock.addSleepListener([this](uint32_t microseconds) {
      const auto progress = meter.read(*pane);
      if (!progress || microseconds != 1'000'000) return;
      seconds.push_back(progress->done);
      if (waits.empty() || waits.back() != progress->waitingFor) waits.push_back(progress->waitingFor);
      EXPECT_EQ(progress->total, 25);
    });
  }
  ~ServerProgressTest() override {
    pane.reset();
    installPlatform(nullptr);
  }
  static std::vector<int> numbers(int first, int last) {
    std::vector<int> result;
    for (int i = first; i <= last; ++i) result.push_back(i);
    return result;
  }
  static std::vector<int> joined(std::vector<int> first, const std::vector<int>& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
  }

  InterfaceDescription interface = shippedInterface();
  SimulatedComputer computer;
  std::unique_ptr<NVKServerPrefs> pane;
  ServerProgressMeter meter;
  std::vector<int> seconds;
  std::vector<std::string> waits;
};

// The test reads after the sleep, when a daemon that comes up in it is there already; a front end reads when
// the label is drawn, a moment earlier.
TEST_F(ServerProgressTest, AServerThatComesUpEarlySkipsTheRestOfTheWait) {
  computer.service.setStartDelay(4);
  ASSERT_TRUE(pane->startServer());
  EXPECT_EQ(seconds, joined(numbers(1, 3), joined(numbers(16, 25), {25})));
  EXPECT_EQ(waits, (std::vector<std::string>{"Waiting for the server to start",
                                             "Waiting for the server to settle"}));
}

TEST_F(ServerProgressTest, AServerThatNeverComesUpTakesTheWholeLength) {
  computer.service.setStartDelay(std::nullopt);
  ASSERT_FALSE(pane->startServer());
  EXPECT_EQ(seconds, numbers(1, 25));
}

TEST_F(ServerProgressTest, ARestartIsTwo) {
  computer.service.setDaemon(700);
  computer.service.setStopDelay(0);
  computer.service.setStartDelay(0);
  pane->onStateTimer();
  ASSERT_TRUE(pane->restartServer());
  EXPECT_EQ(seconds, joined(numbers(16, 25), numbers(16, 25)));
  computer.service.setStopDelay(std::nullopt);
  seconds.clear();
  waits.clear();
  pane->updateGui(false, false);
  ASSERT_FALSE(pane->stopServer());
  EXPECT_EQ(seconds, numbers(1, 25));
  EXPECT_EQ(waits,
            (std::vector<std::string>{"Waiting for the server to stop", "Waiting for the server to settle"}));
}

TEST_F(ServerProgressTest, ThereIsNoneWhileNothingIsUnderWay) {
  EXPECT_FALSE(meter.read(*pane));
  pane->startServer();
  EXPECT_FALSE(seconds.empty());
  pane->updateGui(false, false);
  EXPECT_FALSE(meter.read(*pane));
}

}  // namespace
}  // namespace norvik
