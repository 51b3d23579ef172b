// Runs the tests of the Mac's adapter inside an application where one is asked for, as the toolkit then needs
// it.
#include <gtest/gtest.h>

#include <cstring>

#import <AppKit/AppKit.h>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();  // needs no display
  NSAutoreleasePool* pool = [NSAutoreleasePool new];
  const bool inApplication = testing::GTEST_FLAG(filter).rfind("InApplication", 0) == 0;
  if (inApplication) [NSApplication sharedApplication];
  const int result = RUN_ALL_TESTS();
  [pool release];
  return result;
}
