// The pane in the real System Preferences, used as a person uses it.
#include <QClipboard>
#include <QDir>
#include <QDirIterator>
#include <QGuiApplication>

#include "tests/frontends/prefpane/system_preferences.h"

namespace norvik::prefpane {
namespace {

using desktop::freePort;
using desktop::greetingOn;

const QString kServerFile = QStringLiteral("etc/norvik/svr.cfg");
const QString kAgentFile = QStringLiteral("Users/user/Library/Preferences/com.veltrane.nvkagent.plist");

constexpr QPoint kFirstBox(211, 69);  // the first control of a page that begins with a box
constexpr QPoint kNews(217, 98);      // the first box under a heading
constexpr QPoint kShadow(450, 327);   // on the slider of a user's shadow size, right of its knob
constexpr QPoint kCopy(262, 184);
constexpr QPoint kDiscard(166, 140);  // in the panel that asks
constexpr QPoint kStart(235, 161);

class Pane : public SystemPreferences {
 protected:
  void SetUp() override {
    SystemPreferences::SetUp();
    open();
    openPane();
  }

  void unlock() {
    click(kLock);
    ASSERT_TRUE(eventually([this] { return darkest(kServer) < 60; }));
  }

  void typeIn(const QString& words) {
    lookAfter([&] { x({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("30"), words}); });
  }

  int64_t storedPort() { return intValue(listIn(kServerFile).find("NVKService")->find("PortNumber")); }

  // As another program does.
  void write(const QString& inSandbox, const std::string& bytes) {
    QFile file(path(inSandbox));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(QByteArray::fromStdString(bytes)), static_cast<qint64>(bytes.size()));
  }

  // Ticks the box of the mouse page, and leaves the pane by the button Show All. Returns the page as it was.
  QImage swapButtonsAndLeave() {
    const QImage unticked = lookOfRow(kMouse);
    lookAfterClick(kFirstBox);
    EXPECT_FALSE(swapsButtons());
    click(kShowAll);
    EXPECT_TRUE(eventually([&] { return !panelWindow().isEmpty(); }));
    return unticked;
  }

  bool swapsButtons() { return boolValue(listIn(kAgentFile).find("SwapMouseButtons")); }
};

TEST_F(Pane, ThePagesSwitchInTheSidebar) {
  const QImage image = lookOfPage();
  lookOfRow(kMouse);
  clickRow(kUserImage);
  EXPECT_TRUE(eventually([&] { return lookOfPage() == image; }));
}

struct NamedPage {
  int row;
  const char* name;
};
const NamedPage kPages[] = {
    {1, "user-image"},           {2, "user-mouse"},        {4, "admin-server"},
    {5, "admin-norvik-clients"}, {6, "admin-rdp-clients"}, {7, "admin-connections"},
    {8, "admin-image"},          {9, "admin-system"},      {10, "admin-notifications"},
};

// With the variable NORVIK_PICTURES, writes a picture of each page to the folder that it names.
TEST_F(Pane, EveryPageDiffersOnceUnlocked) {
  const QString folder = qEnvironmentVariable("NORVIK_PICTURES");
  unlock();
  lookOfRow(kMouse);
  QList<QImage> seen;
  for (const NamedPage& page : kPages) {
    const QImage shown = lookOfRow(page.row);
    EXPECT_FALSE(seen.contains(shown)) << page.name;
    seen += shown;
    if (folder.isEmpty()) continue;
    EXPECT_TRUE(look().save(QStringLiteral("%1/prefpane-%2.png").arg(folder, QString::fromUtf8(page.name))));
  }
}

TEST_F(Pane, LockedPagesAreGreyedAndRefuseClicks) {
  for (int row = kServer; row < kRows; ++row) EXPECT_GT(darkest(row), 60) << row;
  lookOfRow(kMouse);
  lookAfterClick(kFirstBox);
  const QImage mouse = lookAfterClick(kFirstBox);
  clickRow(kNorvikClients);
  // Clicks that come after it reach the page that was there.
  lookAfterClick(kFirstBox);
  click(kFirstBox);
  EXPECT_TRUE(eventually([&] { return lookOfPage() == mouse; }));
  unlock();
  for (int row = kServer; row < kRows; ++row) EXPECT_LT(darkest(row), 60) << row;
}

TEST_F(Pane, TheTypicalChange) {
  startServer();
  unlock();
  lookOfRow(kNorvikClients);
  const int port = freePort();
  const QPoint portField = field();
  ASSERT_FALSE(portField.isNull());
  click(portField, 2);
  typeIn(QString::number(port));
  click(kApply);
  EXPECT_TRUE(eventually([port] { return greetingOn(port).startsWith("NVK"); }));
  EXPECT_TRUE(greetingOn(nvkPort).isEmpty());
  EXPECT_TRUE(close());
}

TEST_F(Pane, TheAddressIsCopiedWhereThereIsOne) {
  unlock();
  const QImage stopped = lookOfRow(kNorvikClients);
  lookAfter([this] { startServer(); });
  const QString address = QStringLiteral(":%1").arg(nvkPort);
  EXPECT_TRUE(eventually([&] {
    click(kCopy);
    const QString copied = QGuiApplication::clipboard()->text();
    return copied.endsWith(address) && !copied.contains(QLatin1Char('\n'));
  }));
  stopServer();
  EXPECT_TRUE(eventually([&] { return lookOfPage() == stopped; }));
}

TEST_F(Pane, ANotificationSettingReachesTheMenuAgent) {
  unlock();
  lookOfRow(kNotifications);
  lookAfterClick(kNews);
  click(kApply);
  EXPECT_TRUE(eventually([this] {
    QFile log(path(QStringLiteral(".norvik/log/menua.log")));
    return log.open(QIODevice::ReadOnly) &&
           log.readAll().contains("NvkMunuUpdateSettingsNotification: NvkNotificationShowNews=false");
  }));
  EXPECT_TRUE(eventually([this] {
    QFile history(path(QStringLiteral(".norvik/state/history.jsonl")));
    return history.open(QIODevice::ReadOnly) && history.readAll().contains("\"frontEnd\":\"pane\"");
  }));
}

// The tick marks are four apart.
TEST_F(Pane, TheShadowSizeTakesAnyWholeNumber) {
  lookAfterClick(kFirstBox);  // from now on the server's settings are not followed
  lookAfterClick(kShadow);
  const QString right = QStringLiteral("Right");
  lookAfter([&] { keys({QStringLiteral("Home"), right, right, right}); });
  click(kApply);
  EXPECT_TRUE(eventually([this] { return intValue(listIn(kAgentFile).find("ImageShadowSize")) == 3; }));
}

TEST_F(Pane, TheTimerShowsWhatTheServerDoes) {
  unlock();
  const QImage stopped = lookOfRow(kServer);
  lookAfter([this] { startServer(); });
  stopServer();
  EXPECT_TRUE(eventually([&] { return lookOfPage() == stopped; }));
}

// In a sandbox where a start takes two seconds, so that several clicks are made before it is over.
class SlowPane : public Pane {
 protected:
  void SetUp() override {
    SystemPreferences::SetUp();
    write(QStringLiteral(".norvik/clock"), "5\n");
    open();
    openPane();
  }
};

// The clicks after the first one find the pane waiting for the server, and its button grey.
TEST_F(SlowPane, WhatIsClickedWhileTheServerStartsIsDropped) {
  unlock();
  const QImage stopped = lookOfRow(kServer);
  click(kStart, 2);
  click(kStart + kBelowMessage, 2);  // the button moves down for the message about the wait
  click(kLock);
  click(kShowAll);
  EXPECT_TRUE(eventually([&] { return messageKind() == MessageKind::done; }));
  lookAfter([this] { clickRow(kUserImage, kBelowMessage.y()); });  // no question is in the way
  EXPECT_TRUE(panelWindow().isEmpty());
  EXPECT_TRUE(greetingOn(nvkPort).startsWith("NVK"));
  EXPECT_LT(darkest(kServer, kBelowMessage.y()), 60) << "still unlocked";
  QFile log(path(QStringLiteral(".norvik/log/service.log")));
  ASSERT_TRUE(log.open(QIODevice::ReadOnly));
  EXPECT_FALSE(log.readAll().contains("stop"));
}

TEST_F(Pane, ARefusedPortIsNotAppliedAndSaysSo) {
  unlock();
  lookOfRow(kNorvikClients);
  click(field(), 2);
  typeIn(QStringLiteral("70000"));
  lookOfRow(kUserImage);
  click(kApply);
  EXPECT_TRUE(eventually([&] { return messageKind() == MessageKind::failure; }));
  EXPECT_EQ(storedPort(), nvkPort);
  const int port = freePort();
  typeIn(QString::number(port));  // the field has the keyboard
  click(kApply);
  EXPECT_TRUE(eventually([&] { return messageKind() == MessageKind::done; }));
  EXPECT_EQ(storedPort(), port);
}

TEST_F(Pane, WhatOthersSaveIsShownAtOnce) {
  unlock();
  const QImage before = lookOfRow(kNorvikClients);
  write(kServerFile, serverConfiguration(freePort(), rdpPort));
  EXPECT_TRUE(eventually([&] { return messageKind() == MessageKind::note; }));
  EXPECT_NE(lookOfPage(), before);
}

TEST_F(Pane, ADamagedFileIsSaidAtOnceAndIsNotWrittenOverWithoutAQuestion) {
  unlock();
  lookOfRow(kNorvikClients);
  write(kServerFile, "<plist><dict>");
  EXPECT_TRUE(eventually([&] { return messageKind() == MessageKind::warning; }));
  click(kNews + kBelowMessage);
  click(kApply);
  EXPECT_TRUE(eventually([&] { return !panelWindow().isEmpty(); }));
  keys({QStringLiteral("Return")});  // Cancel
  EXPECT_TRUE(eventually([&] { return panelWindow().isEmpty(); }));
  QFile file(path(kServerFile));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), "<plist><dict>");
}

TEST_F(Pane, LeavingWithChangesAsksAndApplies) {
  swapButtonsAndLeave();
  EXPECT_TRUE(eventually([this] {
    keys({QStringLiteral("Return")});
    return swapsButtons();
  }));
}

TEST_F(Pane, LeavingWithChangesAsksAndDiscards) {
  const QImage unticked = swapButtonsAndLeave();
  clickIn(panelWindow(), kDiscard);
  ASSERT_TRUE(eventually([this] { return panelWindow().isEmpty(); }));
  EXPECT_FALSE(swapsButtons());
  openPane();
  EXPECT_TRUE(eventually([&] { return lookOfPage() == unticked; }));
}

TEST_F(Pane, QuitWithChangesAsksAndApplies) {
  lookOfRow(kMouse);
  lookAfterClick(kFirstBox);
  keys({QStringLiteral("alt+q")});
  ASSERT_TRUE(eventually([&] { return !panelWindow().isEmpty(); }));
  EXPECT_FALSE(swapsButtons());
  EXPECT_TRUE(eventually([this] {
    keys({QStringLiteral("Return")});
    return swapsButtons();
  }));
  EXPECT_TRUE(ends());
}

TEST_F(Pane, ShowAllAndBackAgain) {
  const QImage image = lookOfPage();
  for (int i = 0; i < 2; ++i) {
    click(kShowAll);
    openPane();
    EXPECT_TRUE(eventually([&] { return lookOfPage() == image; }));
  }
}

TEST_F(Pane, TheWindowClosesAndOpensAgain) {
  const QImage image = lookOfPage();
  ASSERT_TRUE(close());
  open();
  openPane();
  EXPECT_TRUE(eventually([&] { return lookOfPage() == image; }));
}

// The toolkit's files, hidden ones too.
QStringList filesOfHome() {
  QStringList files = QDir::home().entryList({QStringLiteral("*GNUstep*")}, QDir::AllEntries | QDir::Hidden);
  QDirIterator below(QDir::homePath() + QStringLiteral("/GNUstep"),
                     QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
  while (below.hasNext()) files += below.next();
  files.sort();
  return files;
}

TEST_F(SystemPreferences, LeavesTheHomeFolderAsItWas) {
  const QStringList before = filesOfHome();
  open();
  openPane();
  EXPECT_TRUE(QFile::exists(path(QStringLiteral("Users/user/GNUstep/Library/Bundles/Norvik.prefPane"))));
  ASSERT_TRUE(close());
  EXPECT_EQ(filesOfHome(), before);
}

}  // namespace
}  // namespace norvik::prefpane
