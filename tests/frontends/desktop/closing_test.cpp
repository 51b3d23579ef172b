// Closing the window leaves the pane: pending changes are asked about, and the answer is carried out, before
// it closes.
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

TEST_F(Closing, ApplyNowSavesBeforeTheWindowGoes) {
  swapButtons();
  Answers apply(QStringLiteral("Apply Now"));
  panel.window.close();
  ASSERT_EQ(apply.seen.size(), 1u);
  EXPECT_EQ(apply.seen[0].title, QStringLiteral("Norvik Server options changed"));
  EXPECT_EQ(pane.m_user_mseSwap, 1);
  EXPECT_TRUE(visibleAtTheEnd);
  EXPECT_EQ(closed, 1);
}

TEST_F(Closing, DiscardPutsTheStoredValuesBack) {
  swapButtons();
  Answers discard(QStringLiteral("Discard Changes"));
  panel.window.close();
  EXPECT_EQ(pane.m_user_mseSwap, 0);
  EXPECT_FALSE(panel.as<QCheckBox>("ib_user_chkbox_mseSwap")->isChecked());
  EXPECT_EQ(closed, 1);
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
  Answers apply(QStringLiteral("Apply Now"));
  QTimer::singleShot(0, qApp, &QCoreApplication::quit);
  QApplication::exec();
  EXPECT_EQ(apply.seen.size(), 1u);
  EXPECT_EQ(pane.m_user_mseSwap, 1);
  EXPECT_EQ(closed, 1);
}

TEST_F(Closing, EscapeAnswersNothingWhereEachAnswerDoesSomething) {
  swapButtons();
  int looks = 0;
  Answers answers([&looks](QWidget& box) {
    if (++looks <= 3) return QTest::keyClick(&box, Qt::Key_Escape);
    static_cast<QMessageBox&>(box).done(0);
  });
  panel.window.close();
  EXPECT_GT(looks, 3);
}

TEST_F(Closing, PendingNotificationSettingsAreNotAskedAbout) {
  panel.unlock();
  panel.choosePage("admin", "Notifications");
  panel.click("ib_admin_chkbox_ntfShowNews");
  Answers none(Qt::Key_Escape);
  panel.window.close();
  EXPECT_TRUE(none.seen.empty());
  EXPECT_EQ(closed, 1);
}

}  // namespace
}  // namespace norvik::desktop
