// The ways back: a row's button and menu, a page's and everything's, by mouse and keyboard.
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QTimer>

#include "src/frontends/desktop/more_menu.h"
#include "src/frontends/desktop/way_back_button.h"
#include "tests/frontends/desktop/simulated_panel.h"

namespace norvik::desktop {
namespace {

class WaysBackInWindow : public SimulatedPanel {
 protected:
  QWidget* button(const char* setting) { return panel.widget((std::string(setting) + "_back").c_str()); }

  // The menu that a right click on the widget opens; null if none does.
  QMenu* menuAt(QWidget* widget) {
    const QPoint place = widget->rect().center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, widget->mapToGlobal(place));
    QApplication::sendEvent(widget, &event);
    panel.settle();
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
  }
  static QAction* entry(QMenu* menu, const char* name) {
    QAction* found = menu != nullptr ? menu->findChild<QAction*>(QString::fromLatin1(name)) : nullptr;
    EXPECT_NE(found, nullptr) << name;
    return found;
  }
  // "WORDS" or "(WORDS)" where it is disabled.
  static std::string shown(const QAction* action) {
    if (action == nullptr) return "";
    const std::string words = action->text().toStdString();
    return action->isEnabled() ? words : "(" + words + ")";
  }
  // What the row's menu says at a widget.
  std::string waysAt(const char* outlet) {
    QMenu* menu = menuAt(panel.widget(outlet));
    const std::string words = shown(entry(menu, "backToStored")) + ", " + shown(entry(menu, "backToDefault"));
    if (menu != nullptr) menu->close();
    panel.settle();
    return words;
  }
  void chooseAt(const char* outlet, const char* name) {
    QMenu* menu = menuAt(panel.widget(outlet));
    QAction* action = entry(menu, name);
    if (action == nullptr) return;
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
    panel.settle();
  }
  void chooseMore(const char* name) {
    int chosen = 0;
    QTimer looks;  // the button waits while its menu is open
    QObject::connect(&looks, &QTimer::timeout, &looks, [&] {
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      if (menu == nullptr) return;
      looks.stop();
      ++chosen;
      QAction* action = entry(menu, name);
      if (action != nullptr && action->isEnabled())
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
      menu->close();
    });
    looks.start(5);
    panel.click("moreButton");
    EXPECT_EQ(chosen, 1) << name;
    panel.settle();
  }
};

TEST_F(WaysBackInWindow, AButtonComesWithTheMarkAndTakesTheChangeBack) {
  openEverything();
  panel.choosePage("admin", "Norvik clients");
  EXPECT_FALSE(button("nvk.sound")->isVisible());
  const QPoint before = panel.widget("ib_admin_chkbox_nvkPrint")->mapTo(&panel.window, QPoint());
  panel.click("ib_admin_chkbox_nvkSound");
  ASSERT_TRUE(button("nvk.sound")->isVisible());
  EXPECT_EQ(button("nvk.sound")->accessibleName(), QStringLiteral("Play sound on the client: back to off"));
  EXPECT_EQ(panel.widget("ib_admin_chkbox_nvkPrint")->mapTo(&panel.window, QPoint()), before);
  panel.click("nvk.sound_back");
  EXPECT_FALSE(panel.as<QCheckBox>("ib_admin_chkbox_nvkSound")->isChecked());
  EXPECT_FALSE(button("nvk.sound")->isVisible());
  EXPECT_TRUE(panel.change.pending().empty());
}

TEST_F(WaysBackInWindow, APortComesBackWithItsBox) {
  openEverything();
  panel.choosePage("admin", "Norvik clients");
  panel.type("ib_admin_edbox_nvkPort", QStringLiteral("5000"));
  EXPECT_EQ(button("nvk.port.custom")->accessibleName(), QStringLiteral("Port number: back to 4074"));
  panel.click("nvk.port.custom_back");
  EXPECT_EQ(panel.as<QLineEdit>("ib_admin_edbox_nvkPort")->text(), QStringLiteral("4074"));
  panel.click("ib_admin_chkbox_nvkPort");
  EXPECT_EQ(button("nvk.port.custom")->accessibleName(), QStringLiteral("Port number: back to 4074"));
  panel.click("nvk.port.custom_back");
  EXPECT_TRUE(panel.as<QCheckBox>("ib_admin_chkbox_nvkPort")->isChecked());
  EXPECT_TRUE(panel.change.pending().empty());
}

TEST_F(WaysBackInWindow, AChoiceHasOneButton) {
  openEverything();
  panel.choosePage("admin", "Connections");
  panel.click("ib_admin_rbutton_lockScreen");
  EXPECT_TRUE(button("connect.act")->isVisible());
  EXPECT_EQ(panel.window.findChild<QWidget*>(QStringLiteral("connect.action_back")), nullptr);
  panel.click("connect.act_back");
  EXPECT_TRUE(pane.ib_admin_rbutton_toConsole.isOn());
}

TEST_F(WaysBackInWindow, TheButtonIsATabStopWhileItIsThere) {
  openEverything();
  panel.choosePage("admin", "Norvik clients");
  panel.click("ib_admin_chkbox_nvkClipb");
  panel.widget("ib_admin_chkbox_nvkClipb")->setFocus();
  panel.press(Qt::Key_Tab);
  ASSERT_EQ(QApplication::focusWidget(), button("nvk.clipboard"));
  panel.press(Qt::Key_Space);
  EXPECT_TRUE(panel.change.pending().empty());
  EXPECT_EQ(QApplication::focusWidget(), panel.widget("ib_admin_chkbox_nvkClipb"));
  panel.press(Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), panel.widget("ib_admin_chkbox_nvkSound"));
}

TEST_F(WaysBackInWindow, TheMenuNamesBothValues) {
  openEverything();
  panel.choosePage("admin", "Norvik clients");
  EXPECT_EQ(waysAt("ib_admin_edbox_nvkPort"), "(Back to what is stored (4074)), Back to the default (4073)");
  panel.type("ib_admin_edbox_nvkPort", QStringLiteral("5000"));
  EXPECT_EQ(waysAt("ib_admin_chkbox_nvkPort"), "Back to what is stored (4074), Back to the default (4073)");
  chooseAt("ib_admin_edbox_nvkPort", "backToStored");
  EXPECT_TRUE(panel.change.pending().empty());
  chooseAt("ib_admin_edbox_nvkPort", "backToDefault");
  EXPECT_EQ(pane.new_admin_nvkPort(), 4073);
  EXPECT_FALSE(pane.ib_admin_chkbox_nvkPort.isOn());
  EXPECT_FALSE(panel.widget("ib_admin_edbox_nvkPort")->isEnabled()) << "the enabling rules have run";
  EXPECT_EQ(pane.m_admin_nvkPort, 4074) << "nothing is applied";
  EXPECT_EQ(waysAt("ib_admin_edbox_nvkPort"), "Back to what is stored (4074), (Back to the default (4073))");
}

TEST_F(WaysBackInWindow, TheMenuOpensAtACaptionAndAtADisabledControl) {
  panel.choosePage("user", "Image");
  auto* caption = panel.window.page().findChild<QLabel*>();
  for (auto* label : panel.window.page().findChildren<QLabel*>()) {
    if (label->buddy() == panel.widget("ib_user_slider_imgDept")) caption = label;
  }
  QMenu* menu = menuAt(caption);
  EXPECT_EQ(shown(entry(menu, "backToDefault")), "(Back to the default (6))");
  if (menu != nullptr) menu->close();
  panel.drag("ib_user_slider_imgDept", 8);
  EXPECT_EQ(waysAt("ib_user_slider_imgDept"), "Back to what is stored (6), Back to the default (6)");
  panel.click("ib_user_chkbox_imgDefs");
  ASSERT_FALSE(panel.widget("ib_user_slider_imgDept")->isEnabled());
  EXPECT_NE(waysAt("ib_user_slider_imgDept").find("(Back to the default (6))"), std::string::npos);
}

TEST_F(WaysBackInWindow, TheKeyForMenusOpensTheMenuOfTheRow) {
  openEverything();
  panel.choosePage("admin", "Image");
  panel.drag("ib_admin_slider_imgDept", 8);
  panel.widget("ib_admin_slider_imgDept")->setFocus();
  panel.press(Qt::Key_F10, Qt::ShiftModifier);
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  QTest::keyClick(menu, Qt::Key_Down);
  QTest::keyClick(menu, Qt::Key_Return);
  panel.settle();
  EXPECT_TRUE(panel.change.pending().empty());
}

TEST_F(WaysBackInWindow, NothingOfALockedRowIsOffered) {
  openEverything();
  panel.choosePage("admin", "Image");
  panel.drag("ib_admin_slider_imgDept", 8);
  ASSERT_FALSE(button("image.depth")->isHidden());
  pane.deauthorize();
  panel.tick();
  panel.window.refresh();
  EXPECT_TRUE(button("image.depth")->isHidden());
}

TEST_F(WaysBackInWindow, APageAndEverythingComeBack) {
  openEverything();
  panel.choosePage("user", "Mouse");
  panel.click("ib_user_chkbox_mseSwap");
  panel.choosePage("admin", "Norvik clients");
  panel.click("ib_admin_chkbox_nvkSound");
  panel.click("ib_admin_chkbox_nvkClipb");
  chooseMore("moreTakeBackPage");
  ASSERT_EQ(panel.change.pending().size(), 1u);
  EXPECT_EQ(panel.change.pending()[0].name, "user.mouse.swap");
  chooseMore("moreTakeBackAll");
  EXPECT_TRUE(panel.change.pending().empty());
}

TEST_F(WaysBackInWindow, APageGetsItsDefaultsAndNothingElse) {
  openEverything();
  panel.choosePage("admin", "Norvik clients");
  chooseMore("morePageToDefaults");
  EXPECT_EQ(pane.new_admin_nvkPort(), 4073);
  EXPECT_EQ(pane.new_admin_nvkSound(), 1);
  for (const SettingChange& change : panel.change.pending()) EXPECT_EQ(change.page, "Norvik clients");
  chooseMore("moreAllToDefaults");
  for (const PaneSetting& setting : paneSettings(panel.interface, pane)) {
    bool isDefault = true;
    for (const Control* control : setting.controls())
      isDefault = isDefault && !pane.differsFromDefault(*control);
    EXPECT_TRUE(isDefault) << setting.name();
  }
  EXPECT_EQ(pane.m_admin_nvkPort, 4074) << "nothing is applied";
}

TEST_F(WaysBackInWindow, WithoutTheLockOnlyTheUsersSettingsGetTheirDefaults) {
  panel.choosePage("user", "Image");
  ASSERT_EQ(pane.new_user_imgDefs(), 0);
  chooseMore("moreAllToDefaults");
  EXPECT_EQ(pane.new_user_imgDefs(), 1);
  EXPECT_EQ(pane.ib_admin_edbox_nvkPort.stringValue(), "4074");
  EXPECT_EQ(panel.window.messages().line(MessageSubject::outcome).message().sentence,
            "Settings behind the lock stay as they are. Open the lock to change them.");
}

}  // namespace
}  // namespace norvik::desktop
