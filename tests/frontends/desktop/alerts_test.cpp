// The alert panels: exact words, sheets of the window, each button's answer, and what Escape and the close
// button answer.
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <optional>
#include <utility>

#include "tests/frontends/desktop/simulated_panel.h"

namespace norvik::desktop {
namespace {

struct AlertCase {
  const char* title;
  const char* message;
  const char* buttons[3];
};

// clang-format off
const AlertCase kAlerts[] = {
    {"Norvik preferences was changed", "What do you want to do with changes you made?",
     {"Apply now", "Discard changes", "Continue editing"}},
    {"Norvik Server options changed", "What do you want to do with changes you made?",
     {"Apply Now", "Discard Changes", nullptr}},
    {"Multiuser Mode Adjustment", "Do you want to make this adjustment automatically?\n",
     {"Yes, Proceed", "No, I'll Do It Later", nullptr}},
    {"Disabling Quartz Extreme acceleration", "Are you sure?\n", {"Yes, Proceed", "No, Thank You", nullptr}},
    {"Resetting Open Files Limit", "Are you sure?", {"Yes", "No", nullptr}},
    {"Reboot is required", "Do you want to reboot now?", {"No, I'll Reboot Later", "Yes, Reboot Now", nullptr}},
};
// clang-format on

class Alerts : public SimulatedPanel {
 protected:
  int ask(const AlertCase& alert) {
    return desktop.alerts.NSRunAlertPanel(alert.title, alert.message, alert.buttons[0], alert.buttons[1],
                                          alert.buttons[2]);
  }

  // The answer to a key or the close button.
  template <typename Way>
  int answerTo(const AlertCase& alert, Way way) {
    Answers answers(way);
    return ask(alert);
  }
};

TEST_F(Alerts, ShowTheirWordsAndAnswerByTheirButtons) {
  const int values[] = {1, 0, -1};
  for (const AlertCase& alert : kAlerts) {
    SCOPED_TRACE(alert.title);
    for (int i = 0; i < 3 && alert.buttons[i] != nullptr; ++i) {
      Answers answers(QString::fromUtf8(alert.buttons[i]));
      EXPECT_EQ(ask(alert), values[i]) << alert.buttons[i];
      ASSERT_EQ(answers.seen.size(), 1u);
      EXPECT_EQ(answers.seen[0].title, QString::fromUtf8(alert.title));
      EXPECT_EQ(answers.seen[0].message, QString::fromUtf8(alert.message));
      QStringList buttons;
      for (const char* button : alert.buttons) {
        if (button != nullptr) buttons += QString::fromUtf8(button);
      }
      buttons.sort();
      EXPECT_EQ(answers.seen[0].buttons, buttons);
      EXPECT_TRUE(answers.seen[0].sheet);
    }
  }
}

TEST_F(Alerts, ShowTheirWholeTitleInTheBoxAndInItsBar) {
  for (const AlertCase& alert : kAlerts) {
    SCOPED_TRACE(alert.title);
    const QString title = QString::fromUtf8(alert.title);
    bool shown = false;
    Answers answers([&](QWidget& box) {
      for (const auto* label : box.findChildren<QLabel*>()) {
        if (label->text() != title || !label->isVisible()) continue;
        shown = label->width() >= label->sizeHint().width() && label->height() >= label->sizeHint().height();
      }
      EXPECT_EQ(box.windowTitle(), title);
      QFont bold = QApplication::font();
      bold.setBold(true);  // the widest letters of a title bar
      EXPECT_GE(box.width(), QFontMetrics(bold).horizontalAdvance(title) + 8 * QFontMetrics(bold).height());
      static_cast<QMessageBox&>(box).done(0);
    });
    ask(alert);
    EXPECT_TRUE(shown);
  }
}

TEST_F(Alerts, HaveALetterForEachButton) {
  for (const AlertCase& alert : kAlerts) {
    SCOPED_TRACE(alert.title);
    QSet<QString> letters;
    qsizetype buttons = 0;
    {
      Answers answers([&](QWidget& box) {
        buttons = static_cast<QMessageBox&>(box).buttons().size();
        for (const auto* button : static_cast<QMessageBox&>(box).buttons()) {
          if (!button->shortcut().isEmpty()) letters += button->shortcut().toString();
        }
        static_cast<QMessageBox&>(box).done(0);
      });
      ask(alert);
    }
    EXPECT_EQ(letters.size(), buttons);
  }
  bool pressed = false;
  Answers no([&pressed](QWidget& box) {
    if (!std::exchange(pressed, true)) QTest::keyClick(&box, Qt::Key_N);
  });
  EXPECT_EQ(ask(kAlerts[4]), 0) << "\"No\" by its letter";
}

TEST_F(Alerts, EscapePressesNoButton) {
  for (const AlertCase& alert : kAlerts) EXPECT_EQ(answerTo(alert, Qt::Key_Escape), -1) << alert.title;
}

TEST_F(Alerts, ClosingPressesNoButton) {
  for (const AlertCase& alert : kAlerts) EXPECT_EQ(answerTo(alert, Answers::Close()), -1) << alert.title;
}

TEST_F(Alerts, AQuestionThatWasAnsweredAlreadyDoesNotComeUp) {
  Answers none(Qt::Key_Escape);
  desktop.alerts.answered = [] { return std::optional(NSAlertAlternateReturn); };
  for (const AlertCase& alert : kAlerts) EXPECT_EQ(ask(alert), NSAlertAlternateReturn);
  EXPECT_TRUE(none.seen.empty());
}

TEST_F(Alerts, ReturnTakesTheDefault) {
  for (const AlertCase& alert : kAlerts) {
    Answers answers(Qt::Key_Return);
    EXPECT_EQ(ask(alert), 1) << alert.title;
  }
}

TEST_F(Alerts, ATickWaitsUntilThePanelIsAnswered) {
  int ticks = 0;
  int before = -1;
  desktop.runLoop.ticked = [&ticks] { ++ticks; };
  QTimer::singleShot(700, &panel.window, [&] {
    before = ticks;
    QApplication::activeModalWidget()->close();
  });
  ticks = 0;
  ask(kAlerts[0]);
  EXPECT_EQ(before, 0);
  desktop.runLoop.ticked = nullptr;
}

TEST_F(Alerts, DecliningToSwitchCompositingOffPutsTheBoxBack) {
  openEverything();
  panel.choosePage("admin", "System");
  Answers no(QStringLiteral("No, Thank You"));
  panel.click("ib_admin_chkbox_noQuartz");
  ASSERT_EQ(no.seen.size(), 1u);
  EXPECT_FALSE(panel.as<QCheckBox>("ib_admin_chkbox_noQuartz")->isChecked());
}

TEST_F(Alerts, AcceptingSwitchesCompositingOff) {
  openEverything();
  panel.choosePage("admin", "System");
  Answers yes(QStringLiteral("Yes, Proceed"));
  panel.click("ib_admin_chkbox_noQuartz");
  EXPECT_TRUE(panel.as<QCheckBox>("ib_admin_chkbox_noQuartz")->isChecked());
}

TEST_F(Alerts, SeveralUsersOfferTheOpenFilesLimit) {
  openEverything();
  panel.choosePage("admin", "Connections");
  Answers yes(QStringLiteral("Yes, Proceed"));
  panel.click("ib_admin_chkbox_multiUser");
  ASSERT_EQ(yes.seen.size(), 1u);
  EXPECT_EQ(yes.seen[0].message,
            QStringLiteral(
                "If you wish to connect more than one user simultaneously, it is recommended that you adjust "
                "\"Open Files Limit\" as well.\n\nDo you want to make this adjustment automatically?\n"));
  EXPECT_TRUE(pane.maxFilesChanged());
}

TEST_F(Alerts, ResettingTheLimitAsksAndARestartIsOffered) {
  desktop.computer.fileSystem.put("/etc/launchd.conf", "limit maxfiles 20000 40000\n");
  openEverything();
  panel.choosePage("admin", "System");
  {
    Answers no(Qt::Key_Escape);
    panel.click("ib_admin_button_maxFAdjust");
    ASSERT_EQ(no.seen.size(), 1u);
    EXPECT_FALSE(pane.maxFilesChanged());
  }
  {
    Answers yes(QStringLiteral("Yes"));
    panel.click("ib_admin_button_maxFAdjust");
    EXPECT_TRUE(pane.maxFilesChanged());
  }
  Answers now(QStringLiteral("Yes, Reboot Now"));
  panel.click("ib_button_Apply");
  ASSERT_EQ(now.seen.size(), 1u);
  EXPECT_TRUE(desktop.launched("/sbin/reboot"));
}

}  // namespace
}  // namespace norvik::desktop
