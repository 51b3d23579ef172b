// The pane in the real System Preferences, worked as a person works it.
#include <QDir>
#include <QDirIterator>

#include "system_preferences.h"

namespace norvik::prefpane {
namespace {

using desktop::freePort;
using desktop::greetingOn;

const QString kAgentFile = QStringLiteral("Users/user/Library/Preferences/com.veltrane.nvkagent.plist");

constexpr QPoint kFirstBox(211, 69);  // the first control of a page that begins with a box
constexpr QPoint kNews(217, 98);      // the first box under a heading
constexpr QPoint kDiscard(166, 140);  // in the panel that asks

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

  // Ticks the box of the mouse page, and leaves the pane by the button that shows all.
  void swapButtonsAndLeave() {
    const QImage image = lookOfPage();
    clickRow(kMouse);
    ASSERT_TRUE(becomesOther(image, [this] { return lookOfPage(); }));
    const QImage unticked = lookOfPage();
    click(kFirstBox);
    ASSERT_TRUE(becomesOther(unticked, [this] { return lookOfPage(); }));
    EXPECT_FALSE(swapsButtons());
    click(kShowAll);
    ASSERT_TRUE(eventually([this] { return !panelWindow().isEmpty(); }));
  }

  bool swapsButtons() { return boolValue(listIn(kAgentFile).find("SwapMouseButtons")); }
};

TEST_F(Pane, ThePagesSwitchInTheSidebar) {
  const QImage image = lookOfPage();
  clickRow(kMouse);
  EXPECT_TRUE(becomesOther(image, [this] { return lookOfPage(); }));
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
TEST_F(Pane, EveryPageIsAnotherOnceUnlocked) {
  const QString folder = qEnvironmentVariable("NORVIK_PICTURES");
  unlock();
  QList<QImage> seen{QImage()};
  for (const NamedPage& page : kPages) {
    clickRow(page.row);
    ASSERT_TRUE(becomesOther(seen.last(), [this] { return lookOfPage(); })) << page.name;
    const QImage shown = lookOfPage();
    EXPECT_FALSE(seen.contains(shown)) << page.name;
    seen += shown;
    if (folder.isEmpty()) continue;
    EXPECT_TRUE(look().save(QStringLiteral("%1/prefpane-%2.png").arg(folder, QString::fromUtf8(page.name))));
  }
}

TEST_F(Pane, LockedPagesAreGreyedAndRefuse) {
  for (int row = kServer; row < kRows; ++row) EXPECT_GT(darkest(row), 60) << row;
  const QImage image = lookOfPage();
  clickRow(kMouse);
  ASSERT_TRUE(becomesOther(image, [this] { return lookOfPage(); }));
  for (int i = 0; i < 2; ++i) {
    const QImage before = lookOfPage();
    click(kFirstBox);
    ASSERT_TRUE(becomesOther(before, [this] { return lookOfPage(); }));
  }
  const QImage mouse = lookOfPage();
  clickRow(kNorvikClients);
  // Clicks that are heard after it find the page that was there.
  click(kFirstBox);
  ASSERT_TRUE(becomesOther(mouse, [this] { return lookOfPage(); }));
  click(kFirstBox);
  EXPECT_TRUE(eventually([&] { return lookOfPage() == mouse; }));
  unlock();
  for (int row = kServer; row < kRows; ++row) EXPECT_LT(darkest(row), 60) << row;
}

TEST_F(Pane, TheTypicalChange) {
  startServer();
  unlock();
  const QImage image = lookOfPage();
  clickRow(kNorvikClients);
  ASSERT_TRUE(becomesOther(image, [this] { return lookOfPage(); }));
  const int port = freePort();
  const QPoint portField = field();
  ASSERT_FALSE(portField.isNull());
  click(portField, 2);
  const QImage before = lookOfPage();
  x({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("30"), QString::number(port)});
  ASSERT_TRUE(becomesOther(before, [this] { return lookOfPage(); }));
  click(kApply);
  EXPECT_TRUE(eventually([port] { return greetingOn(port).startsWith("NVK"); }));
  EXPECT_TRUE(greetingOn(nvkPort).isEmpty());
  EXPECT_TRUE(close());
}

TEST_F(Pane, ANotificationSettingReachesTheMenuAgent) {
  unlock();
  const QImage image = lookOfPage();
  clickRow(kNotifications);
  ASSERT_TRUE(becomesOther(image, [this] { return lookOfPage(); }));
  const QImage stored = lookOfPage();
  click(kNews);
  ASSERT_TRUE(becomesOther(stored, [this] { return lookOfPage(); }));
  click(kApply);
  EXPECT_TRUE(eventually([this] {
    QFile log(path(QStringLiteral(".norvik/log/menua.log")));
    return log.open(QIODevice::ReadOnly) &&
           log.readAll().contains("NvkMunuUpdateSettingsNotification: NvkNotificationShowNews=false");
  }));
}

TEST_F(Pane, TheTimerTellsWhatTheServerDoes) {
  unlock();
  const QImage image = lookOfPage();
  clickRow(kServer);
  ASSERT_TRUE(becomesOther(image, [this] { return lookOfPage(); }));
  const QImage stopped = lookOfPage();
  startServer();
  EXPECT_TRUE(becomesOther(stopped, [this] { return lookOfPage(); }));
  stopServer();
  EXPECT_TRUE(eventually([&] { return lookOfPage() == stopped; }));
}

TEST_F(Pane, LeavingWithChangesAsksAndApplies) {
  swapButtonsAndLeave();
  EXPECT_TRUE(eventually([this] {
    keys({QStringLiteral("Return")});
    return swapsButtons();
  }));
}

TEST_F(Pane, LeavingWithChangesAsksAndDiscards) {
  swapButtonsAndLeave();
  clickIn(panelWindow(), kDiscard);
  ASSERT_TRUE(eventually([this] { return panelWindow().isEmpty(); }));
  EXPECT_FALSE(swapsButtons());
  openPane();
  const QImage ticked = lookOfPage();
  click(kFirstBox);
  ASSERT_TRUE(becomesOther(ticked, [this] { return lookOfPage(); }));
  EXPECT_FALSE(swapsButtons());
}

TEST_F(Pane, ShowAllAndBackAgain) {
  const QImage image = lookOfPage();
  for (int i = 0; i < 2; ++i) {
    click(kShowAll);
    ASSERT_TRUE(becomesOther(image, [this] { return lookOfPage(); }));
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

QStringList filesBelow(const QString& folder) {
  QStringList files;
  QDirIterator below(folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                     QDirIterator::Subdirectories);
  while (below.hasNext()) files += below.next();
  files.sort();
  return files;
}

TEST_F(SystemPreferences, LeavesTheHomeFolderAsItWas) {
  const QStringList before = filesBelow(QDir::homePath() + QStringLiteral("/GNUstep"));
  open();
  openPane();
  EXPECT_TRUE(QFile::exists(path(QStringLiteral("Users/user/GNUstep/Library/Bundles/Norvik.prefPane"))));
  ASSERT_TRUE(close());
  EXPECT_EQ(filesBelow(QDir::homePath() + QStringLiteral("/GNUstep")), before);
}

}  // namespace
}  // namespace norvik::prefpane
