// A panel that nobody touches paints nothing, and costs next to nothing.
#include <QApplication>
#include <QTest>

#include "simulated_panel.h"

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

class Quiet : public SimulatedPanel {};

TEST_F(Quiet, AMinuteOfTicksPaintsNothingOnAnyPage) {
  openEverything();
  for (const TabDescription& tab : panel.interface.tabs) {
    const std::size_t colon = tab.label.find(':');
    panel.choosePage(tab.label.substr(0, colon), tab.label.substr(colon + 1));
    panel.widget("ib_oview_confBar")->setFocus();
    QTest::qWait(50);
    Paints paints;
    for (int i = 0; i < 240; ++i) {
      pane.onStateTimer();
      panel.window.ticked();
      QCoreApplication::processEvents();
    }
    EXPECT_EQ(paints.painted, QStringList()) << tab.label;
  }
}

TEST_F(Quiet, SecondsOfTheRealClockPaintNothing) {
  openEverything();
  panel.choosePage("admin", "Server");
  int ticks = 0;
  desktop.runLoop.ticked = [&] {
    panel.window.ticked();
    ++ticks;
  };
  QTest::qWait(300);
  Paints paints;
  ticks = 0;
  QTest::qWait(2500);
  EXPECT_GE(ticks, 8);
  EXPECT_EQ(paints.painted, QStringList());
  desktop.runLoop.ticked = nullptr;
}

TEST_F(Quiet, WhatChangesIsPainted) {
  openEverything();
  panel.choosePage("admin", "Server");
  QTest::qWait(50);
  Paints paints;
  desktop.computer.service.setDaemon(std::nullopt);
  panel.tick();
  QTest::qWait(50);
  EXPECT_TRUE(paints.painted.contains(QStringLiteral("ib_admin_label_svrState")));
  EXPECT_TRUE(paints.painted.contains(QStringLiteral("stateDot")));
}

TEST_F(Quiet, SettingWhatIsSetPaintsNothing) {
  openEverything();
  panel.choosePage("user", "Image");
  QTest::qWait(50);
  Paints paints;
  for (Control* control : pane.outlets()) {
    if (Binding* binding = panel.window.binding(text(control->name()))) binding->controlChanged(*control);
  }
  QTest::qWait(50);
  EXPECT_EQ(paints.painted, QStringList());
}

}  // namespace
}  // namespace norvik::desktop
