// Runs the desktop's tests in one application, on whichever platform the environment names.
#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (testing::GTEST_FLAG(list_tests))
    return RUN_ALL_TESTS();  // while building, where there may be no display
  QApplication application(argc, argv);
  QApplication::setDoubleClickInterval(20);
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
