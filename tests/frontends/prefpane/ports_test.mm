// The ports of the application, over the real toolkit.
#include <gtest/gtest.h>

#include "src/frontends/prefpane/appkit_platform.h"
#include "src/frontends/prefpane/text.h"

#import "src/frontends/prefpane/appkit.h"
#import "tests/frontends/prefpane/answer.h"

namespace norvik::prefpane {
namespace {

void runLoopFor(double seconds) {
  [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode
                           beforeDate:[NSDate dateWithTimeIntervalSinceNow:seconds]];
}

void count(CFRunLoopTimerRef, void* info) {
  ++*static_cast<int*>(info);
}

TEST(RunLoopPort, ATimerFiresAtTheFirstPassAndAgainUntilItIsInvalid) {
  AppKitRunLoop loop;
  int fired = 0;
  int told = 0;
  loop.ticked = [&told] { ++told; };
  const CFRunLoopTimerRef timer = loop.CFRunLoopTimerCreate(0, 0.01, count, {0, &fired});
  ASSERT_NE(timer, nullptr);
  loop.runOnceInDefaultMode();
  EXPECT_EQ(fired, 0) << "not added yet";
  loop.CFRunLoopAddTimer(timer);
  for (int i = 0; i < 500 && fired < 3; ++i) runLoopFor(0.02);
  EXPECT_GE(fired, 3);
  EXPECT_EQ(told, fired);
  loop.CFRunLoopTimerInvalidate(timer);
  const int before = fired;
  for (int i = 0; i < 3; ++i) loop.runOnceInDefaultMode();
  EXPECT_EQ(fired, before);
  loop.CFRelease(timer);
}

class Active : public ActivationObserver {
 public:
  void applicationDidBecomeActive() override { ++told; }
  int told = 0;
};

void becomeActive() {
  [[NSNotificationCenter defaultCenter] postNotificationName:NSApplicationDidBecomeActiveNotification
                                                      object:NSApp];
}

TEST(ApplicationPort, AnActivationReachesWhoIsStillThere) {
  AppKitApplication application;
  auto observer = std::make_shared<Active>();
  const std::weak_ptr<Active> watched = observer;
  application.observeDidBecomeActive(observer);
  becomeActive();
  EXPECT_EQ(observer->told, 1);
  observer.reset();
  EXPECT_TRUE(watched.expired()) << "the registration holds nobody";
  becomeActive();
}

TEST(ApplicationPort, AnOperationIsDoneAtOnceWhereItIsWaitedFor) {
  AppKitApplication application;
  bool done = false;
  application.performOnMainThread([&done] { done = true; }, true);
  EXPECT_TRUE(done);
  done = false;
  application.performOnMainThread([&done] { done = true; }, false);
  for (int i = 0; i < 100 && !done; ++i) runLoopFor(0.02);
  EXPECT_TRUE(done);
}

TEST(ApplicationPort, TheBackgroundIsAColourOfTheToolkit) {
  const Color color = AppKitApplication().windowBackgroundColor();
  EXPECT_EQ(color.alpha, 1);
  EXPECT_GT(color.red + color.green + color.blue, 0);
}

TEST(ApplicationPort, WithoutAMainWindowThereIsNoFrame) {
  EXPECT_FALSE(AppKitApplication().mainWindowFrame());
}

TEST(AlertPort, EachButtonHasItsAnswerAndTheWordsStandAsTheyAre) {
  AppKitAlertPanels alerts;
  const struct {
    NSString* button;
    int answer;
  } cases[] = {{@"Apply now", 1}, {@"Discard changes", 0}, {@"Continue editing", -1}};
  for (const auto& one : cases) {
    NVKAnswer* answer = [NVKAnswer with:one.button];
    EXPECT_EQ(alerts.NSRunAlertPanel("A title", "100 % of %d %@", "Apply now", "Discard changes",
                                     "Continue editing"),
              one.answer);
    [answer stop];
    EXPECT_TRUE([[answer words] containsObject:@"A title"]);
    EXPECT_TRUE([[answer words] containsObject:@"100 % of %d %@"]);
  }
}

TEST(Text, BytesThatAreNoUtf8AreShownAllTheSame) {
  EXPECT_EQ([text("caf\xc3\xa9") length], 4u);
  EXPECT_EQ([text("caf\xc3") length], 4u);
  EXPECT_EQ(utf8(text("caf\xc3\xa9")), "caf\xc3\xa9");
  EXPECT_EQ(utf8(nil), "");
}

}  // namespace
}  // namespace norvik::prefpane
