// The platform interfaces of the application, over the real toolkit.
#include <gtest/gtest.h>

#include "src/frontends/prefpane/appkit_platform.h"
#include "src/frontends/prefpane/text.h"

#import "src/frontends/prefpane/appkit.h"
#import "tests/frontends/prefpane/panel_answer.h"

namespace norvik::prefpane {
namespace {

void runLoopFor(double seconds) {
  [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode
                           beforeDate:[NSDate dateWithTimeIntervalSinceNow:seconds]];
}

void count(CFRunLoopTimerRef, void* info) {
  ++*static_cast<int*>(info);
}

TEST(AppKitRunLoop, ATimerFiresAtTheFirstPassAndAgainUntilItIsInvalid) {
  AppKitRunLoop loop;
  int fired = 0;
  int ticks = 0;
  loop.ticked = [&ticks] { ++ticks; };
  const CFRunLoopTimerRef timer = loop.CFRunLoopTimerCreate(0, 0.01, count, {0, &fired});
  ASSERT_NE(timer, nullptr);
  loop.runOnceInDefaultMode();
  EXPECT_EQ(fired, 0) << "not added yet";
  loop.CFRunLoopAddTimer(timer);
  for (int i = 0; i < 500 && fired < 3; ++i) runLoopFor(0.02);
  EXPECT_GE(fired, 3);
  EXPECT_EQ(ticks, fired);
  loop.CFRunLoopTimerInvalidate(timer);
  const int before = fired;
  for (int i = 0; i < 3; ++i) loop.runOnceInDefaultMode();
  EXPECT_EQ(fired, before);
  loop.CFRelease(timer);
}

class Active : public ActivationObserver {
 public:
  void applicationDidBecomeActive() override { ++activations; }
  int activations = 0;
};

void becomeActive() {
  [[NSNotificationCenter defaultCenter] postNotificationName:NSApplicationDidBecomeActiveNotification
                                                      object:NSApp];
}

TEST(AppKitApplication, AnActivationReachesAnObserverThatStillExists) {
  AppKitApplication application;
  auto observer = std::make_shared<Active>();
  const std::weak_ptr<Active> watched = observer;
  application.observeDidBecomeActive(observer);
  becomeActive();
  EXPECT_EQ(observer->activations, 1);
  observer.reset();
  EXPECT_TRUE(watched.expired()) << "the registration does not keep the observer";
  becomeActive();
}

TEST(AppKitApplication, AnOperationIsDoneAtOnceWhereItIsWaitedFor) {
  AppKitApplication application;
  bool done = false;
  application.performOnMainThread([&done] { done = true; }, true);
  EXPECT_TRUE(done);
  done = false;
  application.performOnMainThread([&done] { done = true; }, false);
  for (int i = 0; i < 100 && !done; ++i) runLoopFor(0.02);
  EXPECT_TRUE(done);
}

TEST(AppKitApplication, TheBackgroundIsAColourOfTheToolkit) {
  const Color color = AppKitApplication().windowBackgroundColor();
  EXPECT_EQ(color.alpha, 1);
  EXPECT_GT(color.red + color.green + color.blue, 0);
}

TEST(AppKitApplication, WithoutAMainWindowThereIsNoFrame) {
  EXPECT_FALSE(AppKitApplication().mainWindowFrame());
}

TEST(AppKitAlertPanels, EachButtonHasItsResultAndTheWordsAreShownAsTheyAre) {
  AppKitAlertPanels alerts;
  const struct {
    NSString* button;
    int result;
  } cases[] = {{@"Apply now", 1}, {@"Discard changes", 0}, {@"Continue editing", -1}};
  for (const auto& one : cases) {
    NVKPanelAnswer* answer = [NVKPanelAnswer with:one.button];
    EXPECT_EQ(alerts.NSRunAlertPanel("A title", "100 % of %d %@", "Apply now", "Discard changes",
                                     "Continue editing"),
              one.result);
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
