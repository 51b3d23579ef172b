// The toolkit half of the Mac's adapter, inside an application.
#include <gtest/gtest.h>

#include "tests/adapters/apple/apple_under_test.h"

#import <AppKit/AppKit.h>

namespace norvik {
namespace {

class InApplication : public testing::Test {
 protected:
  int alert(const char* first, const char* second, const char* third, long answer) {
    doubles::mac().alertAnswers = {answer};
    return mac.computer().alerts.NSRunAlertPanel("A title", "100 % of %d %@", first, second, third);
  }

  AppleUnderTest mac;
};

TEST_F(InApplication, AlertsAnswerAsThePanelsThatTheyFollow) {
  EXPECT_EQ(alert("Apply", "Discard", "Edit", 1000), NSAlertDefaultReturn);
  EXPECT_EQ(doubles::mac().alerts.back(), "A title|100 % of %d %@|Apply|Discard|Edit");
  EXPECT_EQ(alert("Apply", "Discard", "Edit", 1001), NSAlertAlternateReturn);
  EXPECT_EQ(alert("Apply", "Discard", "Edit", 1002), NSAlertOtherReturn);
}

TEST_F(InApplication, AlertsWithoutSomeButtonsStillAnswerForThoseThatAreThere) {
  EXPECT_EQ(alert("Apply", nullptr, "Edit", 1001), NSAlertOtherReturn);
  EXPECT_EQ(doubles::mac().alerts.back(), "A title|100 % of %d %@|Apply|Edit");
  EXPECT_EQ(alert(nullptr, "No", nullptr, 1000), NSAlertAlternateReturn);
  EXPECT_EQ(alert(nullptr, nullptr, nullptr, 1000), NSAlertDefaultReturn);
}

// The application that runs them may end them in ways of its own.
TEST_F(InApplication, AlertsThatNobodyAnswersChangeNothing) {
  for (const long answer : {1003L, 999L, -1000L, -1001L, 0L})
    EXPECT_EQ(alert("Apply", "Discard", "Edit", answer), NSAlertOtherReturn) << answer;
}

TEST_F(InApplication, ThereIsNoFrameWithoutAMainWindow) {
  EXPECT_EQ([NSApp mainWindow], nil);
  EXPECT_EQ(mac.computer().application.mainWindowFrame(), std::nullopt);
}

TEST_F(InApplication, AMainWindowHasItsFrame) {
  NSWindow* window = [[NSWindow alloc] initWithContentRect:NSMakeRect(10, 20, 300, 200)
                                                 styleMask:NSTitledWindowMask
                                                   backing:NSBackingStoreBuffered
                                                     defer:YES];
  [window setReleasedWhenClosed:NO];
  [window becomeMainWindow];
  const auto frame = mac.computer().application.mainWindowFrame();
  if ([NSApp mainWindow] == window) {
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->width, [window frame].size.width);
    EXPECT_EQ(frame->height, [window frame].size.height);
  } else {
    EXPECT_EQ(frame, std::nullopt);
  }
  [window close];
  [window release];
}

TEST_F(InApplication, TheBackgroundHasComponents) {
  const Color color = mac.computer().application.windowBackgroundColor();
  EXPECT_EQ(color.alpha, 1);
  EXPECT_GT(color.red + color.green + color.blue, 0);
}

TEST_F(InApplication, AnOperationIsCalledAtOnceOrInTheNextPass) {
  AppleApplication& application = mac.computer().application;
  int done = 0;
  application.performOnMainThread([&done] { ++done; }, true);
  EXPECT_EQ(done, 1);
  application.performOnMainThread([&done] { ++done; }, false);
  EXPECT_EQ(done, 1);
  for (int i = 0; i < 100 && done < 2; ++i)
    [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode
                             beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.02]];
  EXPECT_EQ(done, 2);
}

TEST_F(InApplication, WhatAnOperationThrowsStaysHere) {
  AppleApplication& application = mac.computer().application;
  application.performOnMainThread([] { throw std::runtime_error("thrown by a test"); }, true);
  bool done = false;
  application.performOnMainThread([&done] { done = true; }, true);
  EXPECT_TRUE(done);
}

struct Active : ActivationObserver {
  void applicationDidBecomeActive() override { ++activations; }
  int activations = 0;
};

TEST_F(InApplication, AnActivationReachesAnObserverThatStillExists) {
  const auto becomeActive = [] {
    [[NSNotificationCenter defaultCenter] postNotificationName:NSApplicationDidBecomeActiveNotification
                                                        object:NSApp];
  };
  auto observer = std::make_shared<Active>();
  const std::weak_ptr<Active> watched = observer;
  mac.computer().application.observeDidBecomeActive(observer);
  becomeActive();
  EXPECT_EQ(observer->activations, 1);
  observer.reset();
  EXPECT_TRUE(watched.expired()) << "the registration does not keep the observer";
  becomeActive();
}

TEST_F(InApplication, AnAddressIsOpenedAndATextThatIsNoneIsNot) {
  mac.computer().workspace.openURL("https://veltrane.example/norvik");
  mac.computer().workspace.openURL("");
  ASSERT_FALSE(doubles::mac().opened.empty());
  EXPECT_EQ(doubles::mac().opened.front(), "https://veltrane.example/norvik");
}

TEST_F(InApplication, TheHomeFolderIsThatOfTheUser) {
  const std::string home = appleOptions().home;
  EXPECT_EQ(home, [NSHomeDirectory() UTF8String]);
  EXPECT_FALSE(home.ends_with('/'));
}

}  // namespace
}  // namespace norvik
