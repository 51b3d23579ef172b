// The search field: what its keys do, where a result leads, and what the lock keeps.
#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>

#include "src/frontends/desktop/search_result.h"
#include "tests/frontends/desktop/simulated_panel.h"

namespace norvik::desktop {
namespace {

class SearchTest : public SimulatedPanel {
 protected:
  QLineEdit& field() { return *qobject_cast<QLineEdit*>(panel.widget("searchField")); }
  QListWidget& results() { return *qobject_cast<QListWidget*>(panel.widget("searchResults")); }
  void search(const QString& words) {
    panel.press(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(&field(), words);
    panel.settle();
  }
  QWidget* ring() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return panel.window.findChild<QWidget*>(QStringLiteral("searchRing"));
  }
  std::string first() {
    const QListWidgetItem* item = results().item(0);
    return (item->text() + QLatin1Char('\n') + item->data(kPlaceRole).toString()).toStdString();
  }
};

TEST_F(SearchTest, TheResultsTakeTheSidebarsPlaceWhileThereAreWords) {
  EXPECT_TRUE(panel.widget("ib_oview_confBar")->isVisible());
  search(QStringLiteral("mouse"));
  EXPECT_FALSE(panel.widget("ib_oview_confBar")->isVisible());
  EXPECT_EQ(first(), "Mouse\nCurrent User");
  panel.press(Qt::Key_Escape);
  EXPECT_TRUE(panel.widget("ib_oview_confBar")->isVisible());
  EXPECT_TRUE(panel.window.isVisible());
  EXPECT_EQ(field().text(), QString());
}

TEST_F(SearchTest, ReturnShowsTheSettingWithARingUntilTheFocusMoves) {
  search(QStringLiteral("swap"));
  panel.press(Qt::Key_Return);
  QWidget* box = panel.widget("ib_user_chkbox_mseSwap");
  EXPECT_TRUE(box->isVisible());
  EXPECT_EQ(QApplication::focusWidget(), box);
  ASSERT_NE(ring(), nullptr);
  const QPoint place = box->mapTo(ring()->parentWidget(), QPoint());
  EXPECT_TRUE(ring()->geometry().contains(QRect(place, box->size())));
  EXPECT_TRUE(ring()->parentWidget()->rect().contains(ring()->geometry())) << "nothing of it is cut off";
  panel.press(Qt::Key_Tab);
  EXPECT_EQ(ring(), nullptr);
}

TEST_F(SearchTest, TheArrowsChooseWithoutLeavingTheField) {
  search(QStringLiteral("image"));
  EXPECT_EQ(results().currentRow(), 0);
  panel.press(Qt::Key_Down);
  EXPECT_EQ(results().currentRow(), 1);
  EXPECT_EQ(QApplication::focusWidget(), &field());
  panel.press(Qt::Key_Up);
  panel.press(Qt::Key_Up);
  EXPECT_EQ(results().currentRow(), 0);
}

TEST_F(SearchTest, ALockedSettingIsFoundAndShownWhenTheLockIsOpen) {
  search(QStringLiteral("3389"));
  EXPECT_NE(first().find("Locked: Server Administrator, RDP clients"), std::string::npos) << first();
  panel.press(Qt::Key_Return);
  const MessageLine& line = panel.window.messages().line(MessageSubject::outcome);
  EXPECT_EQ(line.message().sentence, "The page RDP clients is locked. Open the lock to see it.");
  EXPECT_EQ(QApplication::focusWidget(), panel.widget("ib_button_Auth"));
  panel.unlock();
  EXPECT_TRUE(panel.widget("ib_admin_chkbox_rdpPort")->isVisible());
  EXPECT_NE(ring(), nullptr);
  EXPECT_TRUE(line.message().isEmpty());
}

TEST_F(SearchTest, APageIsOpened) {
  panel.unlock();
  search(QStringLiteral("notifications"));
  panel.press(Qt::Key_Return);
  EXPECT_TRUE(panel.widget("ib_admin_chkbox_ntfShowNews")->isVisible());
  EXPECT_EQ(ring(), nullptr);
}

TEST_F(SearchTest, AClickChooses) {
  search(QStringLiteral("swap"));
  QTest::mouseClick(results().viewport(), Qt::LeftButton, {},
                    results().visualItemRect(results().item(0)).center());
  panel.settle();
  EXPECT_EQ(QApplication::focusWidget(), panel.widget("ib_user_chkbox_mseSwap"));
}

TEST_F(SearchTest, NothingFoundIsSaidAndCannotBeChosen) {
  search(QStringLiteral("zzzz"));
  EXPECT_EQ(first(), "Nothing is found.\n");
  panel.press(Qt::Key_Return);
  EXPECT_EQ(field().text(), QStringLiteral("zzzz"));
}

TEST_F(SearchTest, ASlashBeginsASearchExceptInAField) {
  panel.widget("ib_oview_confBar")->setFocus();
  panel.press(Qt::Key_Slash);
  EXPECT_EQ(QApplication::focusWidget(), &field());
  EXPECT_EQ(field().text(), QString());
  panel.press(Qt::Key_Slash);
  EXPECT_EQ(field().text(), QStringLiteral("/"));
}

TEST_F(SearchTest, TheFieldIsClosedWhileTheServerStarts) {
  panel.unlock();
  panel.choosePage("admin", "Server");
  bool wasOpen = true;
  QTimer looks;
  QObject::connect(&looks, &QTimer::timeout, &looks, [&] {
    if (desktop.busy.isBusy()) wasOpen = field().isEnabled();
  });
  looks.start(2);
  panel.click("ib_admin_button_svrStart");
  EXPECT_FALSE(wasOpen);
}

}  // namespace
}  // namespace norvik::desktop
