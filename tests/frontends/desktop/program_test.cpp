// The program on a screen, by mouse and keyboard alone.
#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sysexits.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QTemporaryDir>
#include <filesystem>

#include "src/adapters/posix/descriptors.h"
#include "src/adapters/property_lists/codec.h"
#include "tests/frontends/desktop/program.h"
#include "tests/support/files.h"
#include "tests/support/session_bus.h"

namespace norvik::desktop {
namespace {

QString word(const char* utf8) {
  return QString::fromUtf8(utf8);
}

const QString kTitle = QStringLiteral("Norvik Server");
const QString kServerFile = QStringLiteral("etc/norvik/svr.cfg");
const QString kAgentFile = QStringLiteral("Users/user/Library/Preferences/com.veltrane.nvkagent.plist");

class OnScreen : public Program {
 protected:
  void clickLock() {
    const QString window = activeWindow(kTitle);
    const QString shape = x({word("getwindowgeometry"), word("--shell"), window});
    const QString height = shape.section(word("HEIGHT="), 1).section(QLatin1Char('\n'), 0, 0);
    x({word("mousemove"), word("--window"), window, word("30"), QString::number(height.toInt() - 30),
       word("click"), word("1")});
  }

  // With the lock's button just clicked: over the ladder's button, Help, More and the search to the sidebar,
  // down to the page of the Norvik clients, and into its field.
  void enterPortField() {
    keys({word("Tab"), word("Tab"), word("Tab"), word("Tab"), word("Tab"), word("Down"), word("Down"),
          word("Down"), word("alt+p")});
  }

  bool swapsButtons() { return boolValue(listIn(kAgentFile).find("SwapMouseButtons")); }
  PropertyList serverList() { return listIn(kServerFile); }
  int64_t storedNvkPort() { return integerValue(serverList().find("NVKService")->find("PortNumber")); }
  int64_t storedForeign() { return integerValue(serverList().find("Foreign")); }

  // As another program saves the server's file: under the lock of changes, a new file in its place.
  void saveElsewhere(int64_t port, int64_t foreign) {
    const Descriptor lock(
        ::open(path(word("etc/norvik")).toUtf8().constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    ASSERT_TRUE(eventually([&lock] { return ::flock(lock.number(), LOCK_EX | LOCK_NB) == 0; }));
    PropertyList list = serverList();
    auto& root = *list.as<PropertyList::Dictionary>();
    (*root.at("NVKService").as<PropertyList::Dictionary>())["PortNumber"] = port;
    root["Foreign"] = foreign;
    write(path(kServerFile + word(".new")), encodeXmlPropertyList(list));
    std::filesystem::rename(path(kServerFile + word(".new")).toStdString(), path(kServerFile).toStdString());
  }
  void damage() { write(path(kServerFile), "<plist><dict>"); }
  bool isDamaged() { return contentOf(path(kServerFile).toStdString()) == "<plist><dict>"; }
  static void write(const QString& file, const std::string& bytes) { writeFile(file.toStdString(), bytes); }

  bool serverRuns() { return QFile::exists(path(word("var/run/nvkserverd.pid"))); }
};

TEST_F(OnScreen, TheTypicalChange) {
  startServer();
  start();
  clickLock();
  enterPortField();
  const int port = freePort();
  x({word("type"), QString::number(port)});
  keys({word("alt+a")});
  EXPECT_TRUE(eventually([port] { return greetingOn(port).startsWith("NVK"); }));
  EXPECT_TRUE(greetingOn(nvkPort).isEmpty());
  keys({word("Escape")});
  EXPECT_TRUE(ends());
  const std::string history = contentOf(path(word(".norvik/state/history.jsonl")).toStdString());
  EXPECT_NE(history.find("\"frontEnd\":\"window\""), std::string::npos) << history;
}

TEST_F(OnScreen, TheServerStartsAndStops) {
  for (const bool runs : {true, false}) {
    start();
    clickLock();
    // The second time the page is remembered.
    if (runs)
      keys({word("Tab"), word("Tab"), word("Tab"), word("Tab"), word("Tab"), word("Down"), word("Down")});
    keys({word("alt+s")});
    if (!runs) {  // stopping ends connections, so it is asked about
      ASSERT_NE(activeWindow(word("Stop the server?")), QString());
      EXPECT_TRUE(serverRuns());
      keys({word("Return")});
    }
    EXPECT_TRUE(eventually([&] { return serverRuns() == runs && greetingOn(nvkPort).isEmpty() != runs; }));
    // Input is held back until the start or stop is over.
    EXPECT_TRUE(eventually([this] {
      keys({word("Escape")});
      panel.waitForFinished(0);
      return panel.state() == QProcess::NotRunning;
    }));
    EXPECT_TRUE(ends());
  }
}

// Both keys open one menu, and the button of the other menu works by keyboard as often as one likes.
TEST_F(OnScreen, MenusOpenByKeys) {
  start();
  keys({word("Down"), word("alt+s"), word("shift+F10"), word("Down"), word("Return")});
  keys({word("alt+s"), word("Menu"), word("Down"), word("Return")});
  for (int i = 0; i < 2; ++i)
    keys({word("alt+s"), word("alt+m"), word("Down"), word("Down"), word("Return")});
  keys({word("Escape")});
  EXPECT_TRUE(ends()) << "nothing is pending, so nothing is asked";
  EXPECT_FALSE(swapsButtons());
}

TEST_F(OnScreen, ATrialOfAKilledProgramIsTakenBackAtTheNextStart) {
  const int64_t before = storedNvkPort();
  start();
  clickLock();
  enterPortField();
  const int port = freePort();
  x({word("type"), QString::number(port)});
  keys({word("alt+m"), word("Down"), word("Down"), word("Down"), word("Down"), word("Down"),
        word("Return")});  // Apply on trial
  ASSERT_TRUE(eventually([&] { return storedNvkPort() == port; }));
  panel.kill();
  ASSERT_TRUE(panel.waitForFinished());
  start();
  EXPECT_TRUE(eventually([&] { return storedNvkPort() == before; }));
  EXPECT_TRUE(eventually([this] {
    keys({word("Escape")});
    panel.waitForFinished(0);
    return panel.state() == QProcess::NotRunning;
  }));
}

TEST_F(OnScreen, ClosingWithChangesAsksAndAppliesBeforeItEnds) {
  start();
  keys({word("Down"), word("alt+s"), word("alt+F4")});
  ASSERT_NE(activeWindow(word("Apply Changes?")), QString());
  EXPECT_FALSE(swapsButtons());
  keys({word("Return")});
  EXPECT_TRUE(ends());
  EXPECT_TRUE(swapsButtons());
}

TEST_F(OnScreen, ClosingCanBeCancelledAndDiscarded) {
  start();
  keys({word("Down"), word("Tab"), word("space"), word("Escape")});
  ASSERT_NE(activeWindow(word("Apply Changes?")), QString());
  keys({word("Escape")});
  ASSERT_NE(activeWindow(kTitle), QString());
  keys({word("Escape")});
  ASSERT_NE(activeWindow(word("Apply Changes?")), QString());
  keys({word("alt+d")});
  EXPECT_TRUE(ends());
  EXPECT_FALSE(swapsButtons());
}

TEST_F(OnScreen, ARefusedPortIsNotSaved) {
  start();
  clickLock();
  enterPortField();
  x({word("type"), word("70000")});
  keys({word("Return"), word("Down")});  // the field has the focus, so the page stays
  EXPECT_EQ(storedNvkPort(), nvkPort);
  keys({word("ctrl+a")});
  const int port = freePort();
  x({word("type"), QString::number(port)});
  keys({word("Return")});
  EXPECT_TRUE(eventually([&] { return storedNvkPort() == port; }));
  keys({word("Escape")});
  EXPECT_TRUE(ends());
}

// Somebody else saves while a port is typed: what does not collide is taken over, what collides is asked
// about.
TEST_F(OnScreen, WhatOthersSaveIsNotOverwritten) {
  start();
  clickLock();
  enterPortField();
  const int mine = freePort();
  x({word("type"), QString::number(mine)});
  saveElsewhere(nvkPort, 4711);
  keys({word("Return")});
  EXPECT_TRUE(eventually([&] { return storedNvkPort() == mine; }));
  EXPECT_EQ(storedForeign(), 4711);
  keys({word("ctrl+a")});
  x({word("type"), QString::number(nvkPort)});
  saveElsewhere(freePort(), 4712);
  keys({word("Return")});
  ASSERT_NE(activeWindow(word("Changed by Somebody Else Too")), QString());
  keys({word("Return")});  // the person's own value
  EXPECT_TRUE(eventually([&] { return storedNvkPort() == nvkPort; }));
  EXPECT_EQ(storedForeign(), 4712);
  keys({word("Escape")});
  EXPECT_TRUE(ends());
}

TEST_F(OnScreen, ADamagedFileIsNotWrittenOver) {
  damage();
  start();
  clickLock();
  keys({word("ctrl+Tab"), word("ctrl+Tab"), word("ctrl+Tab"), word("alt+l"), word("alt+a")});
  ASSERT_NE(activeWindow(word("Damaged Settings File")), QString());
  keys({word("Escape")});
  ASSERT_NE(activeWindow(kTitle), QString());
  EXPECT_TRUE(isDamaged());
  keys({word("Escape")});
  ASSERT_NE(activeWindow(word("Apply Changes?")), QString());
  keys({word("alt+d")});
  EXPECT_TRUE(ends());
  EXPECT_TRUE(isDamaged());
}

TEST_F(OnScreen, ASignalEndsItWithoutSavingAndWithoutAsking) {
  for (const bool asks : {false, true}) {
    start();
    if (!asks) keys({word("Down")});  // the second time the page is remembered
    keys({word("Tab"), word("space")});
    if (asks) {
      keys({word("Escape")});
      ASSERT_NE(activeWindow(word("Apply Changes?")), QString());
    }
    panel.terminate();
    EXPECT_TRUE(ends()) << asks;
    EXPECT_FALSE(swapsButtons());
  }
}

TEST_F(OnScreen, ASecondStartBringsTheFirstForward) {
  start();
  const QString first = activeWindow(kTitle);
  x({word("windowminimize"), first});
  ASSERT_TRUE(eventually([&] { return x({word("getactivewindow")}) != first; }));
  EXPECT_EQ(run({}), 0);
  EXPECT_EQ(activeWindow(kTitle), first);
  QProcess other;  // a window that covers the first
  other.start(QCoreApplication::applicationFilePath(), {word("--plain-window")});
  ASSERT_NE(activeWindow(word("plain window")), QString());
  EXPECT_EQ(run({}), 0);
  EXPECT_EQ(activeWindow(kTitle), first);
  other.kill();
  other.waitForFinished();
}

TEST_F(OnScreen, ASecondStartThroughASymbolicLinkFindsTheFirst) {
  start();
  const QString first = activeWindow(kTitle);
  QTemporaryDir elsewhere;
  const QString link = elsewhere.filePath(word("link"));
  ASSERT_TRUE(QFile::link(path(word(".")), link));
  x({word("windowminimize"), first});
  ASSERT_TRUE(eventually([&] { return x({word("getactivewindow")}) != first; }));
  EXPECT_EQ(run({word("--root"), link}), 0);
  EXPECT_EQ(activeWindow(kTitle), first);
}

// As a desktop opens it: no program is started but by the bus.
TEST_F(OnScreen, TheBusStartsItOnceAndBringsItForward) {
  const std::string own = path(word("")).toStdString();
  const SessionBus bus({{"HOME", own}, {"XDG_CONFIG_HOME", own}, {"XDG_RUNTIME_DIR", own}},
                       {{"com.veltrane.norvik.settings", builtProgram("norvik-settings")}});
  const QDBusConnection desktop =
      QDBusConnection::connectToBus(QString::fromStdString(bus.address()), word("desktop"));
  const auto activate = [&desktop] {
    QDBusMessage call = QDBusMessage::createMethodCall(word("com.veltrane.norvik.settings"),
                                                       word("/com/veltrane/norvik/settings"),
                                                       word("org.freedesktop.Application"), word("Activate"));
    call.setArguments({QVariantMap()});
    return desktop.call(call).type() == QDBusMessage::ReplyMessage;
  };
  EXPECT_TRUE(activate());
  const uint process = desktop.interface()->servicePid(word("com.veltrane.norvik.settings"));
  ASSERT_NE(process, 0U);
  const QString first = activeWindow(kTitle);
  ASSERT_NE(first, QString());
  x({word("windowminimize"), first});
  ASSERT_TRUE(eventually([&] { return x({word("getactivewindow")}) != first; }));
  EXPECT_TRUE(activate());
  EXPECT_EQ(activeWindow(kTitle), first);
  EXPECT_EQ(desktop.interface()->servicePid(word("com.veltrane.norvik.settings")).value(), process);
  keys({word("Escape")});
  EXPECT_TRUE(eventually([process] { return ::kill(static_cast<pid_t>(process), 0) != 0; }));
  QDBusConnection::disconnectFromBus(word("desktop"));
}

TEST_F(OnScreen, AnAdministratorsPageIsRememberedUntilTheLockIsOpen) {
  start();
  clickLock();
  keys({word("Tab"), word("Tab"), word("Tab"), word("Tab"), word("Tab"), word("Down"), word("Down"),
        word("Escape")});  // the server's page
  ASSERT_TRUE(ends());
  start();
  keys({word("Escape")});
  ASSERT_TRUE(ends()) << "left locked, without having seen it";
  start();
  clickLock();
  keys({word("alt+s")});
  EXPECT_TRUE(eventually([this] { return serverRuns(); }));
}

TEST_F(OnScreen, TheKeyboardOpensPages) {
  start();
  keys({word("ctrl+Tab"), word("alt+s"), word("ctrl+shift+Tab"), word("ctrl+shift+Tab"), word("Return")});
  EXPECT_TRUE(eventually([this] { return swapsButtons(); }));
  keys({word("Escape")});
  EXPECT_TRUE(ends());
}

TEST_F(OnScreen, AFolderThatIsNotThereIsRefused) {
  EXPECT_EQ(run({word("--root"), path(word("nowhere"))}), EX_USAGE);
  EXPECT_FALSE(QFile::exists(path(word("nowhere"))));
}

TEST_F(OnScreen, ARootThatIsNoSandboxIsRefused) {
  EXPECT_EQ(run({word("--root"), path(word("tmp"))}), EX_USAGE);
  EXPECT_FALSE(QFile::exists(path(word("tmp/.norvik"))));
  EXPECT_EQ(run({word("--root"), QString()}), EX_USAGE);
  EXPECT_EQ(run({word("--root=")}), EX_USAGE);
}

TEST_F(OnScreen, WithoutAScreenItEndsAtOnceAndYetHelps) {
  QProcessEnvironment variables = panel.processEnvironment();
  for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
    variables.remove(word(variable));
  panel.setProcessEnvironment(variables);
  EXPECT_EQ(run({}), EX_UNAVAILABLE);
  EXPECT_EQ(run({word("--help")}), EX_OK);
  EXPECT_EQ(run({word("--version")}), EX_OK);
}

TEST_F(OnScreen, SizeAndPageAreRemembered) {
  start();
  keys({word("Down")});
  x({word("windowsize"), word("--sync"), activeWindow(kTitle), word("911"), word("633")});
  keys({word("Escape")});
  ASSERT_TRUE(ends());
  start();
  const QString shape = x({word("getwindowgeometry"), activeWindow(kTitle)});
  EXPECT_TRUE(shape.contains(word("911x633"))) << shape.toStdString();
  keys({word("alt+s"), word("Return"), word("Escape")});  // a letter of the page that it was left on
  EXPECT_TRUE(ends());
  EXPECT_TRUE(swapsButtons());
}

}  // namespace
}  // namespace norvik::desktop
