// What the run loop calls: delays, descriptors; and waits in which it calls nothing.
#include "src/frontends/prefpane/run_loop_sources.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <string>

#include "src/frontends/prefpane/input.h"

#import "src/frontends/prefpane/appkit.h"

namespace norvik::prefpane {
namespace {

void runLoopUntil(const std::function<bool()>& condition) {
  for (int i = 0; i < 500 && !condition(); ++i) {
    [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode
                             beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.01]];
  }
}

TEST(PaneDelay, CallsOnceAndAgainWhenItIsStartedAnew) {
  int calls = 0;
  Delay delay([&calls] { ++calls; });
  delay.start(0.01);
  runLoopUntil([&] { return calls > 0; });
  EXPECT_EQ(calls, 1);
  delay.start(0.01);
  runLoopUntil([&] { return calls > 1; });
  EXPECT_EQ(calls, 2);
}

TEST(PaneDelay, MayBeStartedByItsOwnCall) {
  int calls = 0;
  Delay* again = nullptr;
  Delay delay([&] {
    if (++calls < 3) again->start(0);
  });
  again = &delay;
  delay.start(0);
  runLoopUntil([&] { return calls == 3; });
  EXPECT_EQ(calls, 3);
}

TEST(PaneDelay, DoesNotCallOnceItIsStoppedOrGone) {
  int calls = 0;
  Delay stopped([&calls] { ++calls; });
  stopped.start(0);
  stopped.stop();
  {
    Delay gone([&calls] { ++calls; });
    gone.start(0);
  }
  int later = 0;
  Delay after([&later] { ++later; });
  after.start(0.02);
  runLoopUntil([&] { return later > 0; });
  EXPECT_EQ(calls, 0);
  EXPECT_EQ(later, 1);
}

TEST(PaneDelay, DoesNotCallDuringAWait) {
  int calls = 0;
  Delay delay([&calls] { ++calls; });
  delay.start(0);
  waitDroppingInput(0.05);
  EXPECT_EQ(calls, 0);
  runLoopUntil([&] { return calls > 0; });
  EXPECT_EQ(calls, 1);
}

class DescriptorWatchTest : public testing::Test {
 protected:
  DescriptorWatchTest() { EXPECT_EQ(pipe(ends), 0); }
  ~DescriptorWatchTest() override {
    close(ends[0]);
    close(ends[1]);
  }
  void put() { EXPECT_EQ(write(ends[1], "x", 1), 1); }
  int ends[2];
};

TEST_F(DescriptorWatchTest, CallsEachTimeThatSomethingComes) {
  int calls = 0;
  const DescriptorWatch watch(ends[0], [&] {
    char byte = 0;
    EXPECT_EQ(read(ends[0], &byte, 1), 1);
    ++calls;
  });
  for (int wanted = 1; wanted <= 3; ++wanted) {
    put();
    runLoopUntil([&] { return calls == wanted; });
    EXPECT_EQ(calls, wanted);
  }
}

TEST_F(DescriptorWatchTest, DoesNotCallWhenItIsGoneAndLeavesTheDescriptorOpen) {
  int calls = 0;
  {
    const DescriptorWatch gone(ends[0], [&calls] { ++calls; });
  }
  put();
  bool later = false;
  Delay after([&later] { later = true; });
  after.start(0.02);
  runLoopUntil([&] { return later; });
  EXPECT_EQ(calls, 0);
  char byte = 0;
  EXPECT_EQ(read(ends[0], &byte, 1), 1);
}

// How many keys wait to be handled.
int keysWaiting() {
  int keys = 0;
  while ([NSApp nextEventMatchingMask:NSKeyDownMask
                            untilDate:[NSDate distantPast]
                               inMode:NSDefaultRunLoopMode
                              dequeue:YES] != nil)
    ++keys;
  return keys;
}

void pressKey() {
  [NSApp postEvent:[NSEvent keyEventWithType:NSKeyDown
                                          location:NSZeroPoint
                                     modifierFlags:0
                                         timestamp:0
                                      windowNumber:0
                                           context:nil
                                        characters:@"a"
                       charactersIgnoringModifiers:@"a"
                                         isARepeat:NO
                                           keyCode:0]
           atStart:NO];
}

TEST(PaneWait, DropsWhatIsTypedOrKeepsIt) {
  pressKey();
  waitKeepingInput([] { return false; }, 0.03);
  EXPECT_EQ(keysWaiting(), 1);
  pressKey();
  waitDroppingInput(0.03);
  EXPECT_EQ(keysWaiting(), 0);
  pressKey();
  dropInput();
  EXPECT_EQ(keysWaiting(), 0);
}

TEST(PaneWait, EndsWhenTheConditionHoldsOrTheLimitPasses) {
  int looks = 0;
  EXPECT_TRUE(waitKeepingInput([&looks] { return ++looks == 3; }, 60));
  EXPECT_EQ(looks, 3);
  EXPECT_FALSE(waitKeepingInput([] { return false; }, 0.03));
}

}  // namespace
}  // namespace norvik::prefpane
