// Runs the tests of the pane's objects inside an application, which most of the toolkit needs.
#include <gtest/gtest.h>

#import "src/frontends/prefpane/appkit.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();  // needs no display
  NSAutoreleasePool* pool = [NSAutoreleasePool new];
  [NSApplication sharedApplication];
  const int result = RUN_ALL_TESTS();
  [pool release];
  return result;
}
