// The contract of the run loop.
#include "tests/adapters/contract/computer_under_test.h"

namespace norvik {
namespace {

constexpr double kInterval = 0.05;  // seconds
constexpr uint32_t kMoreThanInterval = 60000;
constexpr double kLongInterval = 1000;
constexpr double kNever = 1e10;

class RunLoopContract : public ContractTest {
 protected:
  // Counts its firings, and ends its own timer at the last.
  struct Counter {
    RunLoop& loop;
    int fired = 0;
    int last = 1000000;
    CFRunLoopTimerRef timer = nullptr;
    CFRunLoopTimerRef lastFired = nullptr;
  };
  static void count(CFRunLoopTimerRef timer, void* info) {
    auto& counter = *static_cast<Counter*>(info);
    counter.lastFired = timer;
    if (++counter.fired < counter.last) return;
    counter.loop.CFRunLoopTimerInvalidate(timer);
    counter.loop.CFRelease(timer);
    counter.timer = nullptr;
  }

  CFRunLoopTimerRef make(double fireDate, Counter& counter, double interval = kInterval) {
    counter.timer = loop.CFRunLoopTimerCreate(fireDate, interval, &count, {.version = 0, .info = &counter});
    EXPECT_NE(counter.timer, nullptr);
    return counter.timer;
  }
  CFRunLoopTimerRef run(double fireDate, Counter& counter, double interval = kInterval) {
    loop.CFRunLoopAddTimer(make(fireDate, counter, interval));
    return counter.timer;
  }
  void end(Counter& counter) {
    loop.CFRunLoopTimerInvalidate(counter.timer);
    loop.CFRelease(counter.timer);
  }
  int firedIn(Counter& counter, int passes) {
    for (int pass = 0; pass < passes; ++pass) loop.runOnceInDefaultMode();
    return counter.fired;
  }

  RunLoop& loop = interfaces.runLoop;
};

INSTANTIATE_TEST_SUITE_P(Every, RunLoopContract, everyAdapter(), adapterName);

TEST_P(RunLoopContract, PassesWithNothingToDo) {
  const auto before = computer->now();
  loop.runOnceInDefaultMode();
  EXPECT_LT(computer->now() - before, std::chrono::seconds(1));
}

TEST_P(RunLoopContract, FiresAPastDateInTheFirstPassAndOnce) {
  Counter counter{loop};
  run(0, counter, kLongInterval);
  EXPECT_EQ(counter.fired, 0);
  EXPECT_EQ(firedIn(counter, 2), 1);
  EXPECT_EQ(counter.lastFired, counter.timer);
  end(counter);
}

TEST_P(RunLoopContract, FiresAgainAfterTheInterval) {
  Counter counter{loop};
  run(0, counter);
  EXPECT_EQ(firedIn(counter, 1), 1);
  interfaces.posix.usleep(kMoreThanInterval);
  EXPECT_EQ(firedIn(counter, 1), 2);
  end(counter);
}

TEST_P(RunLoopContract, FiresOnceForAllTheTimesItMissed) {
  Counter counter{loop};
  run(0, counter);
  EXPECT_EQ(firedIn(counter, 1), 1);
  interfaces.posix.usleep(4 * kMoreThanInterval);
  EXPECT_EQ(firedIn(counter, 1), 2);
  end(counter);
}

TEST_P(RunLoopContract, DoesNotFireBeforeItsDate) {
  Counter counter{loop};
  run(kNever, counter);
  interfaces.posix.usleep(kMoreThanInterval);
  EXPECT_EQ(firedIn(counter, 2), 0);
  end(counter);
}

TEST_P(RunLoopContract, DoesNotFireATimerThatWasNotAdded) {
  Counter counter{loop};
  make(0, counter);
  EXPECT_EQ(firedIn(counter, 2), 0);
  loop.CFRelease(counter.timer);
  EXPECT_EQ(firedIn(counter, 1), 0);
}

TEST_P(RunLoopContract, NeverFiresAnInvalidTimer) {
  Counter counter{loop};
  run(0, counter);
  loop.CFRunLoopTimerInvalidate(counter.timer);
  EXPECT_EQ(firedIn(counter, 2), 0);
  loop.CFRunLoopAddTimer(counter.timer);
  EXPECT_EQ(firedIn(counter, 2), 0);
  loop.CFRelease(counter.timer);
}

TEST_P(RunLoopContract, LetsACallbackEndItsOwnTimer) {
  Counter counter{loop, 0, 1};
  run(0, counter);
  EXPECT_EQ(firedIn(counter, 1), 1);
  interfaces.posix.usleep(kMoreThanInterval);
  EXPECT_EQ(firedIn(counter, 2), 1);
}

TEST_P(RunLoopContract, KeepsTimersApart) {
  Counter one{loop};
  Counter other{loop};
  run(0, one);
  run(0, other);
  end(one);
  EXPECT_EQ(firedIn(other, 1), 1);
  EXPECT_EQ(one.fired, 0);
  end(other);
}

}  // namespace
}  // namespace norvik
