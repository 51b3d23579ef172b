// How many clicks what people come for takes, from the window as it opens. docs/comparison.md has the same
// numbers.
#include <QApplication>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <set>

#include "src/frontends/desktop/reach_dialog.h"
#include "src/frontends/desktop/reach_line.h"
#include "tests/frontends/desktop/simulated_panel.h"
#include "tests/support/sandbox.h"

namespace norvik::desktop {
namespace {

class Clicks : public QObject {
 public:
  Clicks() { qApp->installEventFilter(this); }
  std::size_t count() const { return times_.size(); }

 protected:
  // A press that a widget does not want goes on to the widget that it is in, with the same time.
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::MouseButtonPress)
      times_.insert(static_cast<QMouseEvent*>(event)->timestamp());
    return false;
  }

 private:
  std::set<quint64> times_;
};

class Walk : public SimulatedPanel {
 protected:
  void SetUp() override {
    connectToNetwork(4073);
    desktop.computer.service.setDaemon(77);
    panel.tick();
    panel.server->lookAtForce();
  }
  std::string stored() { return desktop.computer.fileSystem.find("/etc/norvik/svr.cfg")->bytes; }
};

TEST_F(Walk, ThatTheyCanReachMeIsSeenWithoutAClick) {
  EXPECT_FALSE(pane.authorized());
  EXPECT_NE(panel.window.reachLine().line().indexOf(QStringLiteral("mac.example.com")), -1);
}

TEST_F(Walk, WhyNotIsOneClickAway) {
  const Clicks clicks;
  bool seen = false;
  QTimer::singleShot(0, [&] {
    auto* ladder = dynamic_cast<ReachDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(ladder, nullptr);
    seen = true;
    ladder->close();
  });
  QTest::mouseClick(&panel.window.reachLine().button(), Qt::LeftButton);
  EXPECT_TRUE(seen);
  EXPECT_EQ(clicks.count(), 1U);
}

TEST_F(Walk, AnotherPortIsInForceAfterFourClicksAndTheNumber) {
  const Clicks clicks;
  panel.click("ib_button_Auth");
  panel.choosePage("admin", "Norvik clients");
  panel.click("ib_admin_chkbox_nvkPort");
  panel.press(Qt::Key_Tab);
  ASSERT_EQ(QApplication::focusWidget(), panel.widget("ib_admin_edbox_nvkPort"));
  QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("5000"));
  panel.click("ib_button_Apply");
  EXPECT_EQ(clicks.count(), 4U);
  EXPECT_NE(stored().find("<integer>5000</integer>"), std::string::npos) << stored();
  EXPECT_TRUE(desktop.launched("\"apply\""));
}

TEST_F(Walk, TheFieldOfThePortIsFoundWithoutAClick) {
  panel.unlock();
  const Clicks clicks;
  panel.press(Qt::Key_F, Qt::ControlModifier);
  QTest::keyClicks(panel.as<QLineEdit>("searchField"), QStringLiteral("port"));
  panel.settle();
  panel.press(Qt::Key_Return);
  EXPECT_EQ(QApplication::focusWidget(), panel.widget("ib_admin_chkbox_nvkPort"));
  EXPECT_EQ(clicks.count(), 0U);
}

}  // namespace
}  // namespace norvik::desktop
