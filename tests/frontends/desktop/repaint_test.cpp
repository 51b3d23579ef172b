// A panel that nobody uses paints nothing, and costs next to nothing.
#include <QApplication>
#include <QTest>
#include <QTimer>

#include "tests/frontends/desktop/simulated_panel.h"

namespace norvik::desktop {
namespace {

// Every paint event that reaches any widget while it lives.
class Paints : public QObject {
 public:
  Paints() { qApp->installEventFilter(this); }
  ~Paints() override { qApp->removeEventFilter(this); }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && watched->isWidgetType()) painted += watched->objectName();
    return false;
  }
  QStringList painted;
};

class Repaint : public SimulatedPanel {
 protected:
  // Returns when everything is painted, including what a click on the list paints a moment later.
  static void settleDown() {
    for (bool painting = true; painting;) {
      Paints paints;
      QTest::qWait(300);
      painting = !paints.painted.empty();
    }
  }
};

TEST_F(Repaint, AMinuteOfTicksPaintsNothingOnAnyPage) {
  openEverything();
  for (const TabDescription& tab : panel.interface.tabs) {
    const std::size_t colon = tab.label.find(':');
    panel.choosePage(tab.label.substr(0, colon), tab.label.substr(colon + 1));
    panel.widget("ib_oview_confBar")->setFocus();
    settleDown();
    Paints paints;
    for (int i = 0; i < 240; ++i) {
      pane.onStateTimer();
      panel.window.ticked();
      QCoreApplication::processEvents();
    }
    EXPECT_EQ(paints.painted, QStringList()) << tab.label;
  }
}

TEST_F(Repaint, SecondsOfTheRealClockPaintNothing) {
  openEverything();
  panel.choosePage("admin", "Server");
  int ticks = 0;
  desktop.runLoop.ticked = [&] {
    panel.window.ticked();
    ++ticks;
  };
  settleDown();
  Paints paints;
  ticks = 0;
  QTest::qWait(2500);
  EXPECT_GE(ticks, 8);
  EXPECT_EQ(paints.painted, QStringList());
  desktop.runLoop.ticked = nullptr;
}

TEST_F(Repaint, ACaretFlashesForAWhileAndThenRests) {
  openEverything();
  panel.choosePage("admin", "Norvik clients");
  auto* rest =
      panel.widget("ib_admin_edbox_nvkPort")->findChild<QTimer*>(QStringLiteral("caretBlinkTimeout"));
  ASSERT_NE(rest, nullptr);
  panel.type("ib_admin_edbox_nvkPort", QStringLiteral("500"));
  ASSERT_TRUE(rest->isActive());
  {
    Paints paints;
    QTest::qWait(QApplication::cursorFlashTime() + 200);
    EXPECT_TRUE(paints.painted.contains(QStringLiteral("ib_admin_edbox_nvkPort")));
  }
  const int whole = rest->interval();
  rest->setInterval(0);  // the time is over
  settleDown();
  {
    Paints paints;
    QTest::qWait(1500);
    EXPECT_EQ(paints.painted, QStringList());
  }
  EXPECT_EQ(QApplication::cursorFlashTime(), 0);
  rest->setInterval(whole);
  panel.press(Qt::Key_0);
  EXPECT_GT(QApplication::cursorFlashTime(), 0);
}

TEST_F(Repaint, WhatChangesIsPainted) {
  openEverything();
  panel.choosePage("admin", "Server");
  settleDown();
  Paints paints;
  desktop.computer.service.setDaemon(std::nullopt);
  panel.tick();
  QTest::qWait(50);
  EXPECT_TRUE(paints.painted.contains(QStringLiteral("ib_admin_label_svrState")));
  EXPECT_TRUE(paints.painted.contains(QStringLiteral("stateDot")));
}

TEST_F(Repaint, SettingWhatIsSetPaintsNothing) {
  openEverything();
  panel.choosePage("user", "Image");
  settleDown();
  Paints paints;
  for (Control* control : pane.outlets()) {
    if (Binding* binding = panel.window.binding(text(control->name()))) binding->controlChanged(*control);
  }
  QTest::qWait(50);
  EXPECT_EQ(paints.painted, QStringList());
}

}  // namespace
}  // namespace norvik::desktop
