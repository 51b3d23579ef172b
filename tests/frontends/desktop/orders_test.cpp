// Start, stop and restart in the window: the question before those that end connections, the progress, the
// reason where it fails; and what is said where the server uses other values than those that are stored.
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "tests/frontends/desktop/simulated_panel.h"

namespace norvik::desktop {
namespace {

constexpr const char* kStartButton = "ib_admin_button_svrStart";
constexpr const char* kRestartButton = "ib_admin_button_svrRestart";

class Orders : public SimulatedPanel {
 protected:
  void SetUp() override {
    panel.unlock();
    panel.choosePage("admin", "Server");
  }
  void runServer() {
    desktop.computer.service.setDaemon(77);
    panel.tick();
    panel.server->lookAtForce();
  }
  MessageLine& line(MessageSubject subject) { return panel.window.messages().line(subject); }
  MessageLine& outcome() { return line(MessageSubject::outcome); }
  QPushButton* button(MessageSubject subject, MessageAction action) {
    for (auto* candidate : line(subject).findChildren<QPushButton*>()) {
      if (candidate->accessibleName() == text(titleOf(action)) && candidate->isVisible()) return candidate;
    }
    ADD_FAILURE() << "no button " << titleOf(action);
    return nullptr;
  }
};

TEST_F(Orders, StopAndRestartSayThatConnectionsEndAndAsk) {
  runServer();
  for (const char* outlet : {kStartButton, kRestartButton}) {
    Answers cancel(Qt::Key_Escape);
    panel.click(outlet);
    ASSERT_EQ(cancel.seen.size(), 1u);
    EXPECT_TRUE(cancel.seen[0].message.contains(QStringLiteral("is disconnected")));
    EXPECT_TRUE(desktop.computer.service.daemonRuns());
    EXPECT_FALSE(desktop.launched("\"stop\""));
    EXPECT_FALSE(outcome().isVisible());
  }
  Answers stop(QStringLiteral("Stop"));
  panel.click(kStartButton);
  EXPECT_EQ(stop.seen.size(), 1u);
  EXPECT_FALSE(desktop.computer.service.daemonRuns());
  EXPECT_EQ(outcome().message().sentence, "The server is stopped.");
  EXPECT_EQ(outcome().message().kind, MessageKind::done);
}

TEST_F(Orders, StartAsksNothingAndShowsWhatItWaitsFor) {
  desktop.computer.service.setStartDelay(3);
  Answers none(Qt::Key_Escape);
  QList<int> values;
  QStringList sentences;
  int maximum = 0;
  QTimer looks;
  QObject::connect(&looks, &QTimer::timeout, &looks, [&] {
    auto* bar = outcome().findChild<QProgressBar*>();
    if (!desktop.busy.isBusy() || !bar->isVisible()) return;
    maximum = bar->maximum();
    if (values.isEmpty() || values.last() != bar->value()) values += bar->value();
    const QString sentence = text(outcome().message().sentence);
    if (!sentences.contains(sentence)) sentences += sentence;
  });
  looks.start(2);
  panel.click(kStartButton);
  looks.stop();
  EXPECT_TRUE(none.seen.empty());
  EXPECT_EQ(maximum, 15 + 10);
  ASSERT_GT(values.size(), 5);
  EXPECT_TRUE(std::ranges::is_sorted(values));
  EXPECT_GE(values.last(), 24);
  EXPECT_EQ(sentences.size(), 2) << "coming up, settling";
  EXPECT_EQ(outcome().message().sentence, "The server is started.");
  EXPECT_FALSE(outcome().findChild<QProgressBar*>()->isVisible());
}

TEST_F(Orders, AServerThatDoesNotComeUpIsSaidAndCanBeTriedAgain) {
  desktop.computer.service.setStartDelay(std::nullopt);
  panel.click(kStartButton);
  EXPECT_EQ(outcome().message().kind, MessageKind::failure);
  EXPECT_TRUE(outcome().accessibleName().contains(QStringLiteral("The server did not start.")));
  desktop.computer.service.setStartDelay(1);
  QTest::mouseClick(button(MessageSubject::outcome, MessageAction::retry), Qt::LeftButton);
  EXPECT_EQ(outcome().message().kind, MessageKind::done);
}

TEST_F(Orders, AServerThatIsNotInstalledIsTheReason) {
  desktop.computer.fileSystem.remove("/usr/sbin/nvkservice");
  panel.click(kStartButton);
  EXPECT_EQ(outcome().message().kind, MessageKind::failure);
  EXPECT_TRUE(outcome().accessibleName().contains(QStringLiteral("not installed")))
      << outcome().accessibleName().toStdString();
}

TEST_F(Orders, AServerThatIsNotInstalledIsSaidInsteadOfOfferingStart) {
  EXPECT_FALSE(line(MessageSubject::inForce).isVisible());
  EXPECT_TRUE(panel.widget(kStartButton)->isEnabled());
  desktop.computer.fileSystem.remove("/usr/sbin/nvkservice");
  panel.server->lookAtForce();
  EXPECT_TRUE(line(MessageSubject::inForce).isVisible());
  EXPECT_TRUE(line(MessageSubject::inForce)
                  .accessibleName()
                  .contains(QStringLiteral("The Norvik server is not installed on this computer.")))
      << line(MessageSubject::inForce).accessibleName().toStdString();
  for (const char* outlet : {kStartButton, "ib_admin_button_dispManager", "ib_admin_button_accManager"})
    EXPECT_FALSE(panel.widget(outlet)->isEnabled()) << outlet;
  panel.tick();
  EXPECT_FALSE(panel.widget(kStartButton)->isEnabled());
  desktop.computer.fileSystem.put("/usr/sbin/nvkservice", "the tool");
  panel.server->lookAtForce();
  EXPECT_FALSE(line(MessageSubject::inForce).isVisible());
  EXPECT_TRUE(panel.widget(kStartButton)->isEnabled());
}

TEST_F(Orders, WhatIsInForceIsSaidWhereItDiffersAndCanBeTakenUp) {
  runServer();
  EXPECT_FALSE(line(MessageSubject::inForce).isVisible());
  desktop.computer.ports.setServerPorts({4999, 3390});
  panel.server->lookAtForce();
  ASSERT_TRUE(line(MessageSubject::inForce).isVisible());
  EXPECT_TRUE(line(MessageSubject::inForce).accessibleName().contains(QStringLiteral("4999")))
      << line(MessageSubject::inForce).accessibleName().toStdString();
  QTest::mouseClick(button(MessageSubject::inForce, MessageAction::takeUp), Qt::LeftButton);
  EXPECT_TRUE(desktop.launched("\"apply\""));
  EXPECT_FALSE(line(MessageSubject::inForce).isVisible());
  EXPECT_EQ(outcome().message().kind, MessageKind::done) << outcome().message().sentence;
}

TEST_F(Orders, WhatIsInForceStaysClosedUntilItSaysMore) {
  runServer();
  desktop.computer.ports.setServerPorts({4999, 3390});
  panel.server->lookAtForce();
  QTest::mouseClick(
      line(MessageSubject::inForce).findChild<QWidget*>(QStringLiteral("message_inForce_close")),
      Qt::LeftButton);
  panel.server->lookAtForce();
  EXPECT_FALSE(line(MessageSubject::inForce).isVisible());
  desktop.computer.ports.setServerPorts({4998, 3390});
  panel.server->lookAtForce();
  EXPECT_TRUE(line(MessageSubject::inForce).isVisible());
}

TEST_F(Orders, WhatIsTypedIsSaidAsItIsNow) {
  runServer();
  desktop.computer.ports.setServerPorts({4999, 3390});
  panel.server->lookAtForce();
  panel.choosePage("admin", "Norvik clients");
  for (const QString& port : {QStringLiteral("4500"), QStringLiteral("4501")}) {
    panel.type("ib_admin_edbox_nvkPort", port);
    const QString words = QStringLiteral("typed ") + port;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return line(MessageSubject::inForce).accessibleName().contains(words); }, 1500));
  }
}

TEST_F(Orders, APortThatSomebodyElseHasIsSaidWithTheirName) {
  desktop.computer.ports.hold(4074, 999, "nginx");
  panel.click(kStartButton);
  EXPECT_EQ(outcome().message().kind, MessageKind::failure);
  EXPECT_TRUE(outcome().accessibleName().contains(QStringLiteral("nginx")))
      << outcome().accessibleName().toStdString();
}

}  // namespace
}  // namespace norvik::desktop
