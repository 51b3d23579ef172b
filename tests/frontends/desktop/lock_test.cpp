// The lock: what it opens, what stays out of reach while it is closed, and locking with changes pending.
#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QSlider>
#include <QTest>

#include "src/frontends/desktop/lock_button.h"
#include "tests/frontends/desktop/simulated_panel.h"

namespace norvik::desktop {
namespace {

class Lock : public SimulatedPanel {
 protected:
  std::string page() const { return pane.ib_tview_confView.selectedItem()->label; }

  void changeSound() {
    panel.choosePage("admin", "Norvik clients");
    panel.click("ib_admin_chkbox_nvkSound");
  }
};

TEST_F(Lock, OpensTheAdministratorsPages) {
  panel.choosePage("admin", "Server");
  EXPECT_EQ(page(), "user:Image");
  EXPECT_EQ(panel.as<QListWidget>("ib_oview_confBar")->currentRow(), 1);
  panel.unlock();
  EXPECT_TRUE(pane.authorized());
  panel.choosePage("admin", "Server");
  EXPECT_EQ(page(), "admin:Server");
  EXPECT_TRUE(panel.widget("ib_admin_button_svrStart")->isVisible());
}

TEST_F(Lock, RefusedStaysClosed) {
  desktop.computer.authorization.setInteractiveGranted(false);
  panel.unlock();
  panel.tick();
  EXPECT_FALSE(pane.authorized());
  panel.choosePage("admin", "Server");
  EXPECT_EQ(page(), "user:Image");
}

TEST_F(Lock, AHeadingCannotBeChosen) {
  panel.choosePage("user", "Mouse");
  auto* sidebar = panel.as<QListWidget>("ib_oview_confBar");
  QTest::mouseClick(sidebar->viewport(), Qt::LeftButton, {},
                    sidebar->visualItemRect(sidebar->item(0)).center());
  QTest::mouseClick(sidebar->viewport(), Qt::LeftButton, {},
                    sidebar->viewport()->rect().bottomLeft() + QPoint(5, -5));
  EXPECT_EQ(page(), "user:Mouse");
  EXPECT_EQ(sidebar->currentRow(), 2);
}

TEST_F(Lock, KeysPassOverWhatCannotBeChosen) {
  auto* sidebar = panel.as<QListWidget>("ib_oview_confBar");
  sidebar->setFocus();
  for (int i = 0; i < 6; ++i) panel.press(Qt::Key_Down);
  EXPECT_EQ(page(), "user:Mouse");
  panel.press(Qt::Key_S);  // the first letter of a greyed page
  EXPECT_EQ(page(), "user:Mouse");
  panel.press(Qt::Key_Home);
  EXPECT_EQ(page(), "user:Image");
}

// A locked page cannot be reached; but even if it were shown, nothing on it could be changed.
TEST_F(Lock, NothingLockedChangesByKeyWheelOrDrag) {
  for (const TabViewItem& item : pane.ib_tview_confView.items()) {
    if (!item.label.starts_with("admin:")) continue;
    pane.ib_tview_confView.selectItem(item);
    panel.settle();
    for (const ControlDescription* control : panel.interface.controls()) {
      if (!control->outlet.starts_with("ib_admin") || control->kind == ControlKind::label) continue;
      QWidget* widget = panel.widget(control->outlet.c_str());
      if (!widget->isVisible() || control->displayOnly) continue;
      SCOPED_TRACE(control->outlet);
      Control& model = panel.control(control->outlet.c_str());
      const auto before =
          std::tuple(model.state(), model.doubleValue(), model.indexOfSelectedItem(), model.stringValue());
      EXPECT_FALSE(widget->isEnabled());
      panel.click(control->outlet.c_str());
      if (auto* slider = qobject_cast<QSlider*>(widget))
        panel.drag(control->outlet.c_str(), slider->maximum());
      if (control->kind == ControlKind::popUp) panel.choose(control->outlet.c_str(), 1);
      widget->setFocus();
      EXPECT_FALSE(widget->hasFocus());
      for (const auto key : {Qt::Key_Space, Qt::Key_Up, Qt::Key_Right, Qt::Key_5})
        QTest::keyClick(widget, key);
      panel.turnWheel(widget);
      EXPECT_EQ(before, std::tuple(model.state(), model.doubleValue(), model.indexOfSelectedItem(),
                                   model.stringValue()));
    }
  }
  EXPECT_EQ(desktop.launches, std::vector<std::string>());
}

TEST_F(Lock, WithoutChangesLocksAtOnce) {
  panel.unlock();
  panel.choosePage("admin", "Server");
  Answers none(Qt::Key_Escape);
  panel.click("ib_button_Auth");
  EXPECT_TRUE(none.seen.empty());
  EXPECT_FALSE(pane.authorized());
  EXPECT_EQ(page(), "user:Image");
}

TEST_F(Lock, ApplyNowSavesAndLocks) {
  panel.unlock();
  changeSound();
  Answers apply(QStringLiteral("Apply now"));
  panel.click("ib_button_Auth");
  ASSERT_EQ(apply.seen.size(), 1u);
  EXPECT_TRUE(desktop.launched("\"apply\""));
  EXPECT_EQ(pane.m_admin_nvkSound, 1);
  EXPECT_FALSE(pane.authorized());
}

TEST_F(Lock, DiscardPutsTheStoredValuesBackAndLocks) {
  panel.unlock();
  changeSound();
  Answers discard(QStringLiteral("Discard changes"));
  panel.click("ib_button_Auth");
  EXPECT_FALSE(panel.as<QCheckBox>("ib_admin_chkbox_nvkSound")->isChecked());
  EXPECT_FALSE(desktop.launched("\"apply\""));
  EXPECT_FALSE(pane.authorized());
}

TEST_F(Lock, ContinueGoesOnEditing) {
  panel.unlock();
  changeSound();
  Answers go(QStringLiteral("Continue editing"));
  panel.click("ib_button_Auth");
  EXPECT_TRUE(pane.authorized());
  EXPECT_TRUE(panel.as<QCheckBox>("ib_admin_chkbox_nvkSound")->isChecked());
}

TEST_F(Lock, ThePageThatLockingLeftComesBackWithTheNextUnlocking) {
  panel.unlock();
  panel.choosePage("admin", "Server");
  panel.click("ib_button_Auth");
  ASSERT_EQ(page(), "user:Image");
  panel.unlock();
  EXPECT_EQ(page(), "admin:Server");
  EXPECT_EQ(panel.as<QListWidget>("ib_oview_confBar")->currentRow(), 4);
}

TEST_F(Lock, APageThatWasNeverOpenDoesNotComeBack) {
  pane.ib_oview_confBar.selectRow(4);  // as for a picture of a locked page
  panel.settle();
  pane.ib_oview_confBar.selectRow(1);
  panel.unlock();
  EXPECT_EQ(page(), "user:Image");
}

TEST_F(Lock, APageThatWasChosenSinceStays) {
  panel.unlock();
  panel.choosePage("admin", "Server");
  panel.click("ib_button_Auth");
  panel.choosePage("user", "Mouse");
  panel.unlock();
  EXPECT_EQ(page(), "user:Mouse");
}

TEST_F(Lock, ButtonIsDrawnByTheModuleAndAnswersThePointer) {
  auto* button = panel.widget("ib_button_Auth");
  const QImage plain = button->grab().toImage();
  QTest::mouseMove(&panel.window, panel.window.rect().center());
  QTest::mouseMove(button, button->rect().center());
  QEnterEvent enter(button->rect().center(), button->rect().center(), button->rect().center());
  QCoreApplication::sendEvent(button, &enter);
  EXPECT_TRUE(pane.ib_button_Auth.cell().hovered);
  EXPECT_NE(button->grab().toImage(), plain);
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(button, &leave);
  EXPECT_FALSE(pane.ib_button_Auth.cell().hovered);
  EXPECT_EQ(button->grab().toImage(), plain);
  QTest::mousePress(button, Qt::LeftButton);
  EXPECT_TRUE(pane.ib_button_Auth.cell().pressed);
  const QImage pressed = button->grab().toImage();
  EXPECT_NE(pressed, plain);
  QTest::mouseRelease(button, Qt::LeftButton);
  EXPECT_NE(button->grab().toImage(), plain) << "the open lock is another picture";
  EXPECT_TRUE(pane.ib_button_Auth.trackingRect());
}

}  // namespace
}  // namespace norvik::desktop
