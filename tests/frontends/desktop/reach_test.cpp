// The line beside the lock and the ladder: what they show, and when somebody looks.
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include "src/frontends/desktop/background_work.h"
#include "src/frontends/desktop/reach_line.h"
#include "tests/frontends/desktop/simulated_panel.h"
#include "tests/support/sandbox.h"

namespace norvik::desktop {
namespace {

class ReachTest : public SimulatedPanel {
 protected:
  void SetUp() override { connectToNetwork(4500); }
  void runServer() {
    desktop.computer.service.setDaemon(77);
    panel.tick();
    panel.server->lookAtForce();
  }
  QString line() { return panel.window.reachLine().line(); }
  QPushButton& button() { return panel.window.reachLine().button(); }

  // Opens the ladder and calls `look` with it before closing it.
  void withLadder(const std::function<void(ReachDialog& ladder)>& look) {
    bool seen = false;
    QTimer::singleShot(0, [&] {
      auto* ladder = dynamic_cast<ReachDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(ladder, nullptr);
      seen = true;
      look(*ladder);
      ladder->close();
    });
    QTest::mouseClick(&button(), Qt::LeftButton);
    EXPECT_TRUE(seen);
  }
  // The answers of the tab in front.
  static QStringList answers(ReachDialog& ladder) {
    QStringList names;
    auto* tab = ladder.findChild<QTabWidget*>()->currentWidget();
    for (auto* answer : tab->findChildren<QLabel*>(QStringLiteral("reachAnswer")))
      names += answer->accessibleName();
    return names;
  }
};

TEST_F(ReachTest, StateAndAddressesAreSeenWhileTheLockIsClosed) {
  EXPECT_EQ(line(), QStringLiteral("Stopped"));
  runServer();
  EXPECT_FALSE(pane.authorized());
  EXPECT_EQ(line(), QStringLiteral("Started · Norvik mac.example.com:4500 · RDP mac.example.com"));
  EXPECT_TRUE(button().isEnabled());
  EXPECT_TRUE(button().accessibleDescription().startsWith(line()));
}

TEST_F(ReachTest, AServiceThatNobodyCanReachIsSaidInTheLine) {
  desktop.computer.ports.hold(4500, 812, "nginx");
  runServer();
  EXPECT_EQ(line(), QStringLiteral("Started · Norvik clients cannot connect · RDP mac.example.com"));
}

TEST_F(ReachTest, AServerThatEndsIsNoticed) {
  runServer();
  desktop.computer.service.setDaemon(std::nullopt);
  panel.tick();
  EXPECT_EQ(line(), QStringLiteral("Stopped"));
}

TEST_F(ReachTest, TheLadderHasAnAnswerToEachQuestion) {
  runServer();
  withLadder([](ReachDialog& ladder) {
    const QStringList all = answers(ladder);
    ASSERT_EQ(all.size(), 9);
    EXPECT_EQ(all.first(), QStringLiteral("Yes: The server is installed."));
    EXPECT_TRUE(all.last().startsWith(QStringLiteral("Not known: ")));
    EXPECT_EQ(ladder.findChild<QTabWidget*>()->count(), 2);
    QWidget* tab = ladder.findChild<QTabWidget*>()->currentWidget();
    EXPECT_EQ(tab->findChild<QWidget*>(QStringLiteral("reachCode"))->accessibleName(),
              QStringLiteral("mac.example.com:4500"));
  });
}

TEST_F(ReachTest, TheServiceThatFailsIsInFrontWithItsReason) {
  desktop.computer.ports.hold(3389, 812, "nginx");
  runServer();
  withLadder([](ReachDialog& ladder) {
    EXPECT_EQ(ladder.findChild<QTabWidget*>()->currentIndex(), 1);
    EXPECT_TRUE(answers(ladder).contains(QStringLiteral("No: Port 3389 is taken by nginx, process 812.")));
  });
}

TEST_F(ReachTest, AnAddressCanBeCopied) {
  runServer();
  withLadder([](ReachDialog& ladder) {
    for (auto* copy : ladder.findChildren<QPushButton*>()) {
      if (copy->accessibleName() == QStringLiteral("Copy 192.0.2.7:4500"))
        QTest::mouseClick(copy, Qt::LeftButton);
    }
  });
  EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("192.0.2.7:4500"));
}

TEST_F(ReachTest, LookAgainSeesWhatIsDifferentAndKeepsTheTab) {
  runServer();
  withLadder([this](ReachDialog& ladder) {
    ladder.findChild<QTabWidget*>()->setCurrentIndex(1);
    desktop.computer.network.setName("mac.example.com", {});
    QTest::mouseClick(ladder.findChild<QPushButton*>(QStringLiteral("reachAgain")), Qt::LeftButton);
    EXPECT_EQ(ladder.findChild<QTabWidget*>()->currentIndex(), 1);
    EXPECT_TRUE(answers(ladder).contains(QStringLiteral("No: The name mac.example.com leads nowhere.")));
  });
  EXPECT_TRUE(line().contains(QStringLiteral("cannot connect")));
}

TEST(BackgroundWorkTest, WorksBesideTheWindowAndTellsItHere) {
  BackgroundWork background;
  QThread* worked = nullptr;
  QThread* told = nullptr;
  background.run([&] { worked = QThread::currentThread(); }, [&] { told = QThread::currentThread(); });
  ASSERT_TRUE(QTest::qWaitFor([&] { return told != nullptr; }));
  EXPECT_EQ(told, QThread::currentThread());
  EXPECT_NE(worked, told);
}

TEST(BackgroundWorkTest, TellsNobodyOnceItIsGone) {
  bool told = false;
  {
    BackgroundWork().run([] {}, [&told] { told = true; });
  }
  QCoreApplication::processEvents();
  EXPECT_FALSE(told);
}

}  // namespace
}  // namespace norvik::desktop
