// Starting and stopping: the dots, the disabled page, the focus afterwards, the window that goes on painting,
// and input that is held back.
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "src/frontends/desktop/state_dot.h"
#include "src/frontends/shared/interface/server_state.h"
#include "tests/frontends/desktop/simulated_panel.h"

namespace norvik::desktop {
namespace {

class ServerState : public SimulatedPanel {
 protected:
  void SetUp() override {
    panel.unlock();
    panel.choosePage("admin", "Server");
    label = panel.as<QLabel>("ib_admin_label_svrState");
    dot = static_cast<StateDot*>(panel.widget("stateDot"));
    ASSERT_NE(dot, nullptr);
  }

  // Calls `look` now and then while the click on the button is under way, from the event loop.
  template <typename Look>
  void clickAndLook(Look look) {
    QTimer looks;
    QObject::connect(&looks, &QTimer::timeout, &looks, [this, look] {
      if (desktop.busy.isBusy() && isServerChanging(pane)) look();
    });
    looks.start(3);
    panel.click("ib_admin_button_svrStart");
  }

  static constexpr const char* kFrame[] = {"ib_oview_confBar", "ib_button_Auth", "ib_button_Help"};

  QLabel* label = nullptr;
  StateDot* dot = nullptr;
};

TEST_F(ServerState, IsShownByWordAndColour) {
  const QColor stopped = dot->color();
  EXPECT_EQ(label->text(), QStringLiteral("Stopped"));
  desktop.computer.service.setDaemon(77);
  panel.tick();
  EXPECT_EQ(label->text(), QStringLiteral("Started"));
  EXPECT_NE(dot->color(), stopped);
}

TEST_F(ServerState, APidFileWithoutANumberIsARunningServer) {
  desktop.computer.service.setDaemon(77);
  panel.tick();
  const QColor running = dot->color();
  desktop.computer.fileSystem.put("/var/run/nvkserverd.pid", "none\n");
  panel.tick();
  ASSERT_EQ(pane.m_serverPid, 0);
  EXPECT_FALSE(isServerChanging(pane));
  EXPECT_EQ(label->text(), QStringLiteral("Started"));
  EXPECT_EQ(dot->color(), running);
  panel.control("ib_button_Apply").setEnabled(true);
  for (const char* outlet : kFrame) EXPECT_TRUE(panel.widget(outlet)->isEnabled()) << outlet;
  EXPECT_TRUE(panel.widget("ib_button_Apply")->isEnabled());
}

TEST_F(ServerState, IsChangingFromTheClickToTheRefreshThatFollows) {
  std::vector<bool> changing;
  const auto note = [&] { changing.push_back(isServerChanging(pane)); };
  note();
  QTimer::singleShot(0, &panel.window, note);  // in the first pass of the run loop
  panel.click("ib_admin_button_svrStart");
  note();
  EXPECT_EQ(changing, (std::vector<bool>{false, true, false}));
}

TEST_F(ServerState, ARestartIsOneChange) {
  desktop.computer.service.setDaemon(77);
  panel.tick();
  bool open = false;
  Answers restart(Qt::Key_Return);
  QTimer looks;
  QObject::connect(&looks, &QTimer::timeout, &looks, [&] {
    open = open || (desktop.busy.isBusy() && panel.widget("ib_oview_confBar")->isEnabled());
  });
  looks.start(1);
  panel.click("ib_admin_button_svrRestart");
  EXPECT_FALSE(open);
  EXPECT_TRUE(panel.widget("ib_oview_confBar")->isEnabled());
}

TEST_F(ServerState, TheFocusReturnsToTheButtonThatWasPressed) {
  for (const char* outlet :
       {"ib_admin_button_svrStart", "ib_admin_button_svrRestart", "ib_admin_button_svrStart"}) {
    panel.widget(outlet)->setFocus();
    Answers yes(Qt::Key_Return);
    panel.press(Qt::Key_Space);
    EXPECT_EQ(panel.window.focusWidget(), panel.widget(outlet)) << label->text().toStdString();
  }
  EXPECT_EQ(label->text(), QStringLiteral("Stopped"));
}

TEST_F(ServerState, TheFocusOfAButtonThatStaysGreyedGoesToTheOneBeforeIt) {
  desktop.computer.service.setDaemon(77);
  panel.tick();
  desktop.computer.service.setStartDelay(std::nullopt);
  panel.widget("ib_admin_button_svrRestart")->setFocus();
  Answers yes(Qt::Key_Return);
  panel.press(Qt::Key_Space);
  ASSERT_FALSE(panel.widget("ib_admin_button_svrRestart")->isEnabled());
  EXPECT_EQ(panel.window.focusWidget(), panel.widget("ib_admin_button_svrStart"));
}

TEST_F(ServerState, StartCountsDotsWhileEverythingIsGreyed) {
  QStringList texts;
  QSet<QRgb> colours{dot->color().rgb()};
  bool greyed = true;
  clickAndLook([&] {
    if (texts.isEmpty() || texts.last() != label->text()) texts += label->text();
    colours += dot->color().rgb();
    greyed = greyed && !panel.widget("ib_admin_button_svrStart")->isEnabled() &&
             !panel.widget("ib_user_chkbox_imgDefs")->isEnabled() &&
             !panel.widget("ib_button_Apply")->isEnabled() && !panel.widget("ib_button_Auth")->isEnabled() &&
             !panel.widget("ib_button_Help")->isEnabled() && !panel.widget("ib_oview_confBar")->isEnabled();
  });
  ASSERT_GT(texts.size(), 5);
  EXPECT_TRUE(texts.first().startsWith(QStringLiteral("Starting...")));
  for (qsizetype i = 1; i < texts.size(); ++i)
    EXPECT_TRUE(texts[i].startsWith(texts[i - 1]) && texts[i].size() > texts[i - 1].size());
  EXPECT_TRUE(greyed);
  for (const char* outlet : kFrame) EXPECT_TRUE(panel.widget(outlet)->isEnabled()) << outlet;
  EXPECT_EQ(label->text(), QStringLiteral("Started"));
  EXPECT_EQ(panel.as<QPushButton>("ib_admin_button_svrStart")->text().remove(QLatin1Char('&')),
            QStringLiteral("Stop"));
  colours += dot->color().rgb();
  EXPECT_EQ(colours.size(), 3) << "stopped, changing, running";
}

TEST_F(ServerState, StopCountsDotsToo) {
  desktop.computer.service.setDaemon(77);
  panel.tick();
  QString longest;
  Answers stop(Qt::Key_Return);
  clickAndLook([&] {
    if (label->text().size() > longest.size()) longest = label->text();
  });
  EXPECT_TRUE(longest.startsWith(QStringLiteral("Stopping....")));
  EXPECT_EQ(label->text(), QStringLiteral("Stopped"));
}

class PaintCount : public QObject {
 public:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++paints;
    return false;
  }
  int paints = 0;
};

TEST_F(ServerState, TheWindowPaintsWhileItWaits) {
  PaintCount count;
  label->installEventFilter(&count);
  clickAndLook([] {});
  EXPECT_GT(count.paints, 8) << "at least once a dot";
}

TEST_F(ServerState, NeitherInputNorTicksNorClosingGetThrough) {
  int ticks = 0;
  desktop.runLoop.ticked = [&] { ticks += desktop.busy.isBusy() ? 1 : 0; };
  bool tried = false;
  clickAndLook([&] {
    tried = true;
    panel.window.close();
    EXPECT_TRUE(panel.window.isVisible());
    auto* handle = panel.window.windowHandle();
    QTest::keyClick(handle, Qt::Key_Escape);
    QTest::keyClick(handle, Qt::Key_Q, Qt::ControlModifier);
    QTest::mouseClick(handle, Qt::LeftButton, {},
                      panel.widget("ib_button_Auth")->mapTo(&panel.window, QPoint(9, 9)));
  });
  EXPECT_TRUE(tried);
  EXPECT_TRUE(panel.window.isVisible());
  EXPECT_TRUE(pane.authorized());
  EXPECT_EQ(ticks, 0);
  desktop.runLoop.ticked = nullptr;
}

TEST_F(ServerState, AnActivationWaitsUntilItIsOver) {
  desktop.computer.authorization.setSilentGranted(false);  // the next check locks the pane
  clickAndLook([&] {
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_TRUE(pane.authorized());
  });
  EXPECT_TRUE(QTest::qWaitFor([&] { return !pane.authorized(); }));
}

TEST_F(ServerState, AnActivationChecksTheLock) {
  desktop.computer.authorization.setSilentGranted(true);
  Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
  EXPECT_TRUE(pane.authorized());
  desktop.computer.authorization.setSilentGranted(false);
  Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
  EXPECT_FALSE(pane.authorized());
}

}  // namespace
}  // namespace norvik::desktop
