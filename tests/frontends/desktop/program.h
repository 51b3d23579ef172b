// The program itself in a sandbox of its own, used from outside by a real mouse and keyboard.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>

#include "tests/support/sandbox.h"
#include "tests/support/tcp_port.h"

namespace norvik::desktop {

using norvik::eventually;
using norvik::freePort;
// The same as the toolkit's type.
QByteArray greetingOn(int port);

class Program : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // Starts and stops the sandbox's server without the panel; the test fails where this is not possible.
  void startServer();
  void stopServer();
  // Runs the panel to its end with these further words and the variables of `panel`; its exit status, -1
  // where a signal ended it or the limit was exceeded.
  int run(const QStringList& words);
  // Starts the panel and waits for its window.
  void start();
  // Whether the started panel ends by itself, with status 0.
  bool ends();

  // Runs xdotool and returns what it prints, without spaces at the ends.
  QString x(const QStringList& words);
  // Presses keys one after another, named as xdotool names them.
  void keys(const QStringList& names);
  // The window of that title, once it is there and has the keyboard; empty where it does not come.
  QString activeWindow(const QString& title);

  // A property list of the sandbox, and where a file of it is; the paths begin without a slash.
  PropertyList listIn(const QString& inSandbox) const;
  QString path(const QString& inSandbox) const;

  int nvkPort = 0;
  int rdpPort = 0;
  QProcess panel;  // its environment is for `run` too

 private:
  void orderServer(const std::string& order);
  Sandbox box_;
};

}  // namespace norvik::desktop
