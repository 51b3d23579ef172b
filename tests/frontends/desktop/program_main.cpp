// Runs the program's tests, or is another program with a window.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <string_view>

int main(int argc, char** argv) {
  if (argc == 2 && std::string_view(argv[1]) == "--plain-window") {
    QApplication application(argc, argv);
    QLabel window;
    window.setWindowTitle(QStringLiteral("plain window"));
    window.showMaximized();
    return QApplication::exec();
  }
  testing::InitGoogleTest(&argc, argv);
  QCoreApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
