// Where Help leads: to the address in the Info dictionary of the bundle that the host loaded.
#include <gtest/gtest.h>

#include <string>

#include "src/frontends/prefpane/text.h"
#include "src/frontends/shared/interface/window_texts.h"
#include "tests/support/sandbox_folder.h"

#import "tests/frontends/prefpane/pane_under_test.h"
#import "tests/frontends/prefpane/panel_answer.h"

#import <objc/runtime.h>

namespace norvik::prefpane {
namespace {

std::string opened;
BOOL hasBrowser = YES;

BOOL keepAddress(id /*workspace*/, SEL /*selector*/, NSURL* url) {
  opened = utf8([url absoluteString]);
  return hasBrowser;
}

// Keeps what the toolkit would open in a browser.
class PaneHelp : public testing::Test {
 protected:
  PaneHelp() {
    opened.clear();
    hasBrowser = YES;
  }
  ~PaneHelp() override { method_setImplementation(open_, usual_); }

  // The address that Help opens in a pane of that bundle.
  static std::string addressOpenedBy(NSString* bundle) {
    NSPreferencePane* pane = newPane(bundle);
    [pane loadMainView];
    [button(pane, @"Help") performClick:nil];
    [pane release];
    return opened;
  }

 private:
  Method open_ = class_getInstanceMethod([NSWorkspace class], @selector(openURL:));
  IMP usual_ =
      method_setImplementation(open_, reinterpret_cast<IMP>(reinterpret_cast<void (*)()>(keepAddress)));
};

TEST_F(PaneHelp, IsTheBuiltInAddressWhereTheBundleHasNone) {
  EXPECT_TRUE(addressOpenedBy(@NORVIK_BUNDLE).starts_with("https://")) << opened;
}

TEST_F(PaneHelp, IsSaidInAPanelWhereNothingOpensIt) {
  hasBrowser = NO;
  NVKPanelAnswer* answer = [NVKPanelAnswer with:text(window_texts::kClose)];
  const std::string address = addressOpenedBy(@NORVIK_BUNDLE);
  [answer stop];
  std::string words;
  for (NSUInteger i = 0; i < [[answer words] count]; ++i)
    words += utf8([[answer words] objectAtIndex:i]) + "\n";
  EXPECT_NE(words.find(window_texts::kNoBrowserTitle), std::string::npos) << words;
  EXPECT_NE(words.find(address), std::string::npos) << words;
}

TEST_F(PaneHelp, SaysNothingWhereABrowserOpensIt) {
  NVKPanelAnswer* answer = [NVKPanelAnswer with:text(window_texts::kClose)];
  addressOpenedBy(@NORVIK_BUNDLE);
  [answer stop];
  EXPECT_EQ([[answer words] count], 0u);
}

TEST_F(PaneHelp, IsTheAddressOfTheBundlesOwnInfoDictionary) {
  const SandboxFolder folder;
  NSString* copy = text(folder.path() + "/Norvik.prefPane");
  NSFileManager* files = [NSFileManager defaultManager];
  ASSERT_TRUE([files createDirectoryAtPath:copy
               withIntermediateDirectories:YES
                                attributes:nil
                                     error:nullptr]);
  ASSERT_TRUE([files copyItemAtPath:@NORVIK_BUNDLE "/Resources"
                             toPath:[copy stringByAppendingString:@"/Resources"]
                              error:nullptr]);
  NSString* file = [copy stringByAppendingString:@"/Resources/Info-gnustep.plist"];
  NSMutableDictionary* info = [NSMutableDictionary dictionaryWithContentsOfFile:file];
  [info setObject:@"com.example.norvik" forKey:@"CFBundleIdentifier"];  // the toolkit knows a bundle by it
  [info setObject:@"https://help.example.com/norvik" forKey:@"NVKProductSupport"];
  ASSERT_TRUE([info writeToFile:file atomically:YES]);
  EXPECT_EQ(addressOpenedBy(copy), "https://help.example.com/norvik");
}

}  // namespace
}  // namespace norvik::prefpane
