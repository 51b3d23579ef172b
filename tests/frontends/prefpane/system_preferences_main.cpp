// Runs the tests of the pane in System Preferences; an application, so that the screen can be looked at.
#include <gtest/gtest.h>

#include <QGuiApplication>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  QGuiApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
