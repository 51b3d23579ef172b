// Closing the window asks about everything that is pending before the pane is left, and there is a way back.
// What the answer says is carried out before the window closes; if it cannot be, the window stays.
#include <QApplication>
#include <QCheckBox>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "tests/frontends/desktop/simulated_panel.h"

namespace norvik::desktop {
namespace {

class Closing : public SimulatedPanel {
 protected:
  Closing() {
    panel.window.closed = [this] {
      ++closed;
      visibleAtTheEnd = panel.window.isVisible();
    };
  }
  void swapButtons() {
    panel.choosePage("user", "Mouse");
    panel.click("ib_user_chkbox_mseSwap");
  }
  std::string agentFile() const {
    return desktop.computer.fileSystem.home() + "/Library/Preferences/com.veltrane.nvkagent.plist";
  }
  MessageLine& outcome() { return panel.window.messages().line(MessageSubject::outcome); }
  int closed = 0;
  bool visibleAtTheEnd = false;
};

TEST_F(Closing, WithoutChangesAsksNothing) {
  Answers none(Qt::Key_Escape);
  panel.window.close();
  EXPECT_TRUE(none.seen.empty());
  EXPECT_EQ(closed, 1);
  EXPECT_FALSE(panel.window.isVisible());
}

TEST_F(Closing, AsksOnceAndNamesTheChanges) {
  swapButtons();
  Answers discard(QStringLiteral("Discard"));
  panel.window.close();
  ASSERT_EQ(discard.seen.size(), 1u) << "the pane's own question does not come up after it";
  EXPECT_EQ(discard.seen[0].title, QStringLiteral("Apply Changes?"));
  EXPECT_TRUE(discard.seen[0].message.startsWith(QStringLiteral("1 change is not applied.")));
  EXPECT_TRUE(discard.seen[0].message.contains(QStringLiteral("Mouse")));
  EXPECT_EQ(discard.seen[0].buttons,
            (QStringList{QStringLiteral("Apply"), QStringLiteral("Cancel"), QStringLiteral("Discard")}));
}

TEST_F(Closing, ApplySavesBeforeTheWindowGoes) {
  swapButtons();
  Answers apply(QStringLiteral("Apply"));
  panel.window.close();
  ASSERT_EQ(apply.seen.size(), 1u);
  EXPECT_EQ(pane.m_user_mseSwap, 1);
  EXPECT_TRUE(visibleAtTheEnd);
  EXPECT_EQ(closed, 1);
}

TEST_F(Closing, DiscardPutsTheStoredValuesBack) {
  swapButtons();
  Answers discard(QStringLiteral("Discard"));
  panel.window.close();
  EXPECT_EQ(pane.m_user_mseSwap, 0);
  EXPECT_FALSE(panel.as<QCheckBox>("ib_user_chkbox_mseSwap")->isChecked());
  EXPECT_EQ(closed, 1);
}

TEST_F(Closing, CancelEscapeAndTheCloseButtonGoOnEditing) {
  swapButtons();
  const auto staysAfter = [this](auto way) {
    Answers answers(way);
    panel.window.close();
    EXPECT_EQ(answers.seen.size(), 1u);
    EXPECT_TRUE(panel.window.isVisible());
    EXPECT_EQ(closed, 0);
    EXPECT_TRUE(pane.m_isSelected) << "the pane was not left";
    EXPECT_TRUE(panel.as<QCheckBox>("ib_user_chkbox_mseSwap")->isChecked());
    EXPECT_EQ(pane.m_user_mseSwap, 0);
  };
  staysAfter(QStringLiteral("Cancel"));
  staysAfter(Qt::Key_Escape);
  staysAfter(Answers::Close());
}

TEST_F(Closing, AfterCancelItAsksAgain) {
  swapButtons();
  {
    Answers cancel(Qt::Key_Escape);
    panel.press(Qt::Key_Escape);
    EXPECT_EQ(cancel.seen.size(), 1u);
  }
  Answers apply(Qt::Key_Return);
  panel.press(Qt::Key_Escape);
  EXPECT_EQ(apply.seen.size(), 1u);
  EXPECT_EQ(closed, 1);
  EXPECT_EQ(pane.m_user_mseSwap, 1);
}

TEST_F(Closing, ASaveThatFailsKeepsTheWindowAndTheEdits) {
  swapButtons();
  desktop.computer.fileFaults.set(FileOperation::write, agentFile(), true);
  {
    Answers apply(QStringLiteral("Apply"));
    panel.window.close();
    EXPECT_EQ(apply.seen.size(), 1u);
  }
  EXPECT_EQ(closed, 0);
  ASSERT_TRUE(panel.window.isVisible());
  EXPECT_EQ(outcome().message().kind, MessageKind::failure);
  EXPECT_TRUE(panel.as<QCheckBox>("ib_user_chkbox_mseSwap")->isChecked());
  desktop.computer.fileFaults.set(FileOperation::write, agentFile(), false);
  Answers apply(QStringLiteral("Apply"));
  panel.window.close();
  EXPECT_EQ(apply.seen.size(), 1u);
  EXPECT_EQ(closed, 1);
  EXPECT_EQ(pane.m_user_mseSwap, 1);
}

TEST_F(Closing, AValueThatCannotBeKeepsTheWindow) {
  openEverything();
  panel.choosePage("admin", "Norvik clients");
  panel.type("ib_admin_edbox_nvkPort", QStringLiteral("70000"));
  panel.choosePage("user", "Mouse");
  Answers apply(QStringLiteral("Apply"));
  panel.window.close();
  EXPECT_EQ(apply.seen.size(), 1u);
  EXPECT_EQ(closed, 0);
  EXPECT_EQ(panel.window.focusWidget(), panel.widget("ib_admin_edbox_nvkPort"));
}

TEST_F(Closing, ClosingTwiceAsksOnce) {
  swapButtons();
  int tries = 0;
  QTimer again;
  QObject::connect(&again, &QTimer::timeout, &again, [&] {
    if (++tries > 3) return;
    panel.window.close();
    EXPECT_TRUE(panel.window.isVisible());
  });
  again.start(1);
  QTimer::singleShot(60, &panel.window, [] {
    for (auto* button : QApplication::activeModalWidget()->findChildren<QPushButton*>()) {
      if (button->text().remove(QLatin1Char('&')).startsWith(QStringLiteral("Discard"))) button->click();
    }
  });
  panel.window.close();
  again.stop();
  EXPECT_GT(tries, 0);
  EXPECT_EQ(closed, 1);
}

TEST_F(Closing, QuittingAsksToo) {
  swapButtons();
  Answers apply(QStringLiteral("Apply"));
  QTimer::singleShot(0, qApp, &QCoreApplication::quit);
  QApplication::exec();
  EXPECT_EQ(apply.seen.size(), 1u);
  EXPECT_EQ(pane.m_user_mseSwap, 1);
  EXPECT_EQ(closed, 1);
}

TEST_F(Closing, PendingNotificationSettingsAreAskedAboutToo) {
  panel.unlock();
  panel.choosePage("admin", "Notifications");
  panel.click("ib_admin_chkbox_ntfShowNews");
  const bool shown = pane.ib_admin_chkbox_ntfShowNews.isOn();
  Answers apply(QStringLiteral("Apply"));
  panel.window.close();
  ASSERT_EQ(apply.seen.size(), 1u);
  EXPECT_EQ(pane.m_admin_ntfShowNews, shown);
  EXPECT_FALSE(pane.notificationSettingsChanged());
  EXPECT_EQ(closed, 1);
}

TEST_F(Closing, WithoutAskingNothingIsAskedAndNothingSaved) {
  swapButtons();
  Answers none(Qt::Key_Escape);
  panel.window.closeWithoutAsking();
  EXPECT_TRUE(none.seen.empty());
  EXPECT_EQ(closed, 1);
  EXPECT_EQ(pane.m_user_mseSwap, 0);
  EXPECT_EQ(desktop.launches, std::vector<std::string>());
}

}  // namespace
}  // namespace norvik::desktop
