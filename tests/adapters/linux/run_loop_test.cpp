// What the Linux adapter's run loop offers to front ends beyond the contract.
#include <gtest/gtest.h>

#include <csignal>
#include <thread>

#include "src/adapters/linux/run_loop.h"

namespace norvik {
namespace {

using namespace std::chrono_literals;
using Clock = LinuxRunLoop::Clock;

// Calls a function of a test as a timer.
struct Timer {
  Timer(LinuxRunLoop& runLoop, double fireDate, double interval, std::function<void()> body)
      : loop(runLoop), action(std::move(body)) {
    timer = loop.CFRunLoopTimerCreate(
        fireDate, interval, [](CFRunLoopTimerRef, void* info) { static_cast<Timer*>(info)->action(); },
        {.version = 0, .info = this});
    loop.CFRunLoopAddTimer(timer);
  }
  ~Timer() {
    loop.CFRunLoopTimerInvalidate(timer);
    loop.CFRelease(timer);
  }
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  LinuxRunLoop& loop;
  std::function<void()> action;
  CFRunLoopTimerRef timer;
};

class LinuxRunLoopTest : public testing::Test {
 protected:
  LinuxRunLoop loop;
};

TEST_F(LinuxRunLoopTest, RunsForTheGivenTime) {
  const auto before = Clock::now();
  loop.runFor(50ms);
  EXPECT_GE(Clock::now() - before, 50ms);
  EXPECT_LT(Clock::now() - before, 2s);
}

TEST_F(LinuxRunLoopTest, FiresTimersWhileItRuns) {
  int fired = 0;
  const Timer timer(loop, 0, 0.02, [&] {
    if (++fired == 3) loop.stop();
  });
  const auto before = Clock::now();
  loop.run(before + 10s);
  EXPECT_EQ(fired, 3);
  EXPECT_GE(Clock::now() - before, 20ms);
}

TEST_F(LinuxRunLoopTest, FiresAtADateToCome) {
  const auto before = Clock::now();
  const Timer timer(loop, absoluteTime() + 0.05, 100, [&] { loop.stop(); });
  loop.run(before + 10s);
  EXPECT_GE(Clock::now() - before, 45ms);
  EXPECT_LT(Clock::now() - before, 5s);
}

TEST_F(LinuxRunLoopTest, FiresATimerWithoutAnIntervalOnce) {
  int fired = 0;
  const Timer timer(loop, 0, 0, [&] { ++fired; });
  loop.runFor(20ms);
  EXPECT_EQ(fired, 1);
}

TEST_F(LinuxRunLoopTest, DoesNotFireATimerWithinItsOwnCallback) {
  int fired = 0;
  const Timer timer(loop, 0, 0.001, [&] {
    ++fired;
    loop.runFor(20ms);
  });
  loop.runOnceInDefaultMode();
  EXPECT_EQ(fired, 1);
}

TEST_F(LinuxRunLoopTest, FiresOthersWithinACallback) {
  int fired = 0;
  const Timer outer(loop, 0, 100, [&] { loop.run(Clock::now() + 10s); });
  const Timer inner(loop, absoluteTime() + 0.005, 100, [&] {
    ++fired;
    loop.stop();
  });
  loop.runOnceInDefaultMode();
  EXPECT_EQ(fired, 1);
}

TEST_F(LinuxRunLoopTest, IsWokenFromAnotherThread) {
  const auto before = Clock::now();
  bool wasCalled = false;
  std::thread other([&] {
    std::this_thread::sleep_for(20ms);
    loop.perform([&] {
      wasCalled = true;
      loop.stop();
    });
  });
  loop.run(before + 10s);
  other.join();
  EXPECT_TRUE(wasCalled);
  EXPECT_LT(Clock::now() - before, 5s);
}

TEST_F(LinuxRunLoopTest, CallsWhatIsPerformedInTheNextPassAndOnce) {
  int called = 0;
  loop.perform([&] {
    ++called;
    loop.perform([&] { called += 10; });
  });
  EXPECT_EQ(called, 0);
  loop.runOnceInDefaultMode();
  EXPECT_EQ(called, 1);
  loop.runOnceInDefaultMode();
  EXPECT_EQ(called, 11);
}

LinuxRunLoop* interrupted = nullptr;

TEST_F(LinuxRunLoopTest, StopsForASignal) {
  interrupted = &loop;
  const auto previous = ::signal(SIGUSR1, [](int) { interrupted->stop(); });
  const auto before = Clock::now();
  const Timer timer(loop, absoluteTime() + 0.02, 100, [] { ::raise(SIGUSR1); });
  loop.run(before + 10s);
  EXPECT_LT(Clock::now() - before, 5s);
  ::signal(SIGUSR1, previous);
}

TEST_F(LinuxRunLoopTest, RunsAgainAfterAStop) {
  loop.stop();
  loop.run();  // would not end otherwise
  const auto before = Clock::now();
  loop.runFor(30ms);
  EXPECT_GE(Clock::now() - before, 30ms);
}

}  // namespace
}  // namespace norvik
