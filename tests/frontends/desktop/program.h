// The program itself in a sandbox of its own, worked from outside by a real mouse and keyboard.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <functional>
#include <memory>

#include "src/server/mac/platform/property_list.h"

namespace norvik::desktop {

// Whether it comes true within ten seconds.
bool eventually(const std::function<bool()>& condition);
// A port of the loopback that nobody listens on.
int freePort();
// What is said to somebody who connects; empty where nobody listens.
QByteArray greetingOn(int port);

class Program : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // Has the sandbox's server run, or not run any more, without the panel.
  void startServer();
  void stopServer();
  // Runs the panel to its end, or starts it and waits for its window. More words and variables may follow.
  int run(const QStringList& words);
  void start();
  // Whether the started panel ends by itself, with status 0.
  bool ends();

  // Runs xdotool and answers what it prints.
  QString x(const QStringList& words);
  void keys(const QStringList& names);
  // The window of that title, once it is there and has the keyboard.
  QString activeWindow(const QString& title);

  PropertyList listIn(const QString& path) const;
  QString path(const QString& inSandbox) const { return root_.filePath(inSandbox); }

  int nvkPort = 0;
  int rdpPort = 0;
  QProcess panel;

 private:
  int sandbox(const QStringList& words);
  int orderServer(const QString& order);
  QTemporaryDir root_;
};

}  // namespace norvik::desktop
