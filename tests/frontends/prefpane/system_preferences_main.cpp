// Runs the tests of the pane in System Preferences, in an application, which can take pictures of the screen.
#include <gtest/gtest.h>

#include <QGuiApplication>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();  // needs no display
  QGuiApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
