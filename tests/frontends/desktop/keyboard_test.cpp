// The panel by keyboard alone, and the wheel where it is not wanted.
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSet>
#include <QSlider>
#include <QTest>

#include "tests/frontends/desktop/simulated_panel.h"

namespace norvik::desktop {
namespace {

class Keyboard : public SimulatedPanel {
 protected:
  // The names of all tab stops, in order, beginning at the sidebar.
  QStringList stops() {
    QStringList names;
    panel.widget("ib_oview_confBar")->setFocus();
    do {
      names += QApplication::focusWidget()->objectName();
      panel.press(Qt::Key_Tab);
    } while (names.size() < 100 && QApplication::focusWidget()->objectName() != names.first());
    return names;
  }

  // The mnemonics of the visible page, each with the texts that have it.
  QMap<QChar, QStringList> letters() {
    QMap<QChar, QStringList> found;
    const auto note = [&found](const QString& words) {
      const qsizetype at = words.indexOf(QLatin1Char('&'));
      if (at >= 0) found[words[at + 1].toLower()] += words;
    };
    for (const auto* button : panel.window.findChildren<QAbstractButton*>()) {
      if (button->isVisible()) note(button->text());
    }
    for (const auto* label : panel.window.findChildren<QLabel*>()) {
      if (label->isVisible() && label->buddy() != nullptr) note(label->text());
    }
    return found;
  }
};

TEST_F(Keyboard, TabGoesFromTheSidebarThroughThePageToTheButtons) {
  openEverything();
  panel.choosePage("admin", "Norvik clients");
  EXPECT_EQ(
      stops().join(QLatin1Char(' ')),
      QStringLiteral(
          "ib_oview_confBar ib_admin_chkbox_nvkEnabled ib_admin_label_nvkAddress_copy "
          "ib_admin_chkbox_nvkPort ib_admin_edbox_nvkPort ib_admin_chkbox_nvkClipb "
          "ib_admin_chkbox_nvkSound ib_admin_chkbox_nvkPrint ib_button_Auth reachButton ib_button_Help moreButton "
          "searchField"));
}

TEST_F(Keyboard, TabStopsAtEveryControlThatCanBeWorked) {
  openEverything();
  for (const TabDescription& tab : panel.interface.tabs) {
    const std::size_t colon = tab.label.find(':');
    panel.choosePage(tab.label.substr(0, colon), tab.label.substr(colon + 1));
    const QStringList names = stops();
    EXPECT_EQ(QSet<QString>(names.begin(), names.end()).size(), names.size()) << tab.label;
    for (const SectionDescription& section : tab.sections) {
      for (const RowDescription& row : section.rows) {
        for (const ControlDescription& control : row.controls) {
          const QWidget* widget = panel.widget(control.outlet.c_str());
          const bool worked = control.kind != ControlKind::label && !control.displayOnly;
          bool reachable = worked && widget->isVisible() && widget->isEnabled();
          const auto* radio = qobject_cast<const QRadioButton*>(widget);
          if (radio != nullptr) reachable = radio->isChecked();  // one stop for its whole group
          EXPECT_EQ(names.contains(widget->objectName()), reachable) << control.outlet;
        }
      }
    }
  }
}

TEST_F(Keyboard, EveryLabelOfAPageHasALetterOfItsOwn) {
  openEverything();
  for (const TabDescription& tab : panel.interface.tabs) {
    const std::size_t colon = tab.label.find(':');
    panel.choosePage(tab.label.substr(0, colon), tab.label.substr(colon + 1));
    const auto found = letters();
    for (auto letter = found.begin(); letter != found.end(); ++letter) {
      EXPECT_EQ(letter.value().size(), 1)
          << tab.label << ": " << letter.value().join(QLatin1Char('|')).toStdString();
    }
    for (const auto* button : panel.window.findChildren<QAbstractButton*>()) {
      if (!button->isVisible() || button->text().isEmpty()) continue;
      EXPECT_TRUE(button->text().contains(QLatin1Char('&'))) << button->text().toStdString();
    }
  }
}

TEST_F(Keyboard, ALetterStaysUniqueWhenAButtonTakesAnotherTitle) {
  openEverything();
  panel.choosePage("admin", "Server");
  EXPECT_EQ(panel.as<QPushButton>("ib_admin_button_svrStart")->text(), QStringLiteral("&Stop"));
  desktop.computer.service.setDaemon(std::nullopt);
  panel.tick();
  EXPECT_EQ(panel.as<QPushButton>("ib_admin_button_svrStart")->text(), QStringLiteral("&Start"));
  panel.control("ib_admin_button_svrStart").setTitle("Halt");
  panel.settle();
  for (const QStringList& bearers : letters())
    EXPECT_EQ(bearers.size(), 1) << bearers.join(QLatin1Char('|')).toStdString();
}

TEST_F(Keyboard, TheTypicalChangeByKeysAlone) {
  panel.press(Qt::Key_C, Qt::AltModifier);  // the lock, by its hint
  ASSERT_TRUE(pane.authorized());
  panel.widget("ib_oview_confBar")->setFocus();
  for (int i = 0; i < 3; ++i) panel.press(Qt::Key_Down);
  panel.tick();  // which enables the controls after unlocking
  ASSERT_EQ(pane.ib_tview_confView.selectedItem()->label, "admin:Norvik clients");
  panel.press(Qt::Key_P, Qt::AltModifier);
  ASSERT_EQ(QApplication::focusWidget(), panel.widget("ib_admin_edbox_nvkPort"));
  QTest::keyClicks(panel.widget("ib_admin_edbox_nvkPort"), QStringLiteral("5000"));
  panel.press(Qt::Key_Return);
  EXPECT_EQ(pane.m_admin_nvkPort, 5000);
  EXPECT_TRUE(desktop.launched("\"apply\""));
}

TEST_F(Keyboard, ReturnAppliesFromAnyControlThatIsNoButton) {
  openEverything();
  for (const char* outlet : {"ib_admin_chkbox_nvkClipb", "ib_admin_edbox_nvkPort", "ib_oview_confBar"}) {
    panel.choosePage("admin", "Norvik clients");
    panel.click("ib_admin_chkbox_nvkPrint");
    const int64_t stored = pane.m_admin_nvkPrint;
    panel.widget(outlet)->setFocus();
    panel.press(Qt::Key_Return);
    EXPECT_NE(pane.m_admin_nvkPrint, stored) << outlet;
  }
}

TEST_F(Keyboard, ReturnOnAButtonPressesIt) {
  openEverything();
  panel.choosePage("admin", "Norvik clients");
  panel.click("ib_admin_chkbox_nvkPrint");  // something to apply
  panel.widget("ib_button_Help")->setFocus();
  panel.press(Qt::Key_Return);
  EXPECT_EQ(desktop.opened.size(), 1u);
  panel.widget("ib_button_Help")->setFocus();
  panel.press(Qt::Key_Enter);
  EXPECT_EQ(desktop.opened.size(), 2u);
  QApplication::clipboard()->clear();
  panel.widget("ib_admin_label_nvkAddress_copy")->setFocus();
  panel.press(Qt::Key_Return);
  EXPECT_NE(QApplication::clipboard()->text(), QString());
  EXPECT_FALSE(desktop.launched("\"apply\""));
  Answers discard(QStringLiteral("Discard changes"));
  panel.widget("ib_button_Auth")->setFocus();
  panel.press(Qt::Key_Return);
  EXPECT_FALSE(pane.authorized());
  EXPECT_FALSE(desktop.launched("\"apply\""));
}

TEST_F(Keyboard, F1OpensHelp) {
  panel.press(Qt::Key_F1);
  EXPECT_EQ(desktop.opened.size(), 1u);
  EXPECT_TRUE(desktop.launches.empty());
}

TEST_F(Keyboard, ControlTabGoesThroughThePagesThatCanBeChosen) {
  const auto page = [this] { return pane.ib_tview_confView.selectedItem()->label; };
  const auto next = [this] { panel.press(Qt::Key_Tab, Qt::ControlModifier); };
  const auto previous = [this] { panel.press(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier); };
  ASSERT_EQ(page(), "user:Image");
  next();
  EXPECT_EQ(page(), "user:Mouse");
  next();
  EXPECT_EQ(page(), "user:Image") << "past the locked pages, from the last to the first";
  previous();
  EXPECT_EQ(page(), "user:Mouse");
  openEverything();
  next();
  EXPECT_EQ(page(), "admin:Server") << "past the heading";
  previous();
  EXPECT_EQ(page(), "user:Mouse");
  previous();
  previous();
  EXPECT_EQ(page(), "admin:Notifications");
  panel.choosePage("admin", "Norvik clients");
  panel.widget("ib_admin_edbox_nvkPort")->setFocus();
  next();
  EXPECT_NE(page(), "admin:Norvik clients") << "from within a field too";
}

TEST_F(Keyboard, ArrowsMoveAmongRadioButtonsAndTabStopsOnceAtTheGroup) {
  openEverything();
  panel.choosePage("admin", "Connections");
  const char* const group[] = {"ib_admin_rbutton_toConsole", "ib_admin_rbutton_lockScreen",
                               "ib_admin_rbutton_toHidden"};
  panel.click(group[0]);
  panel.widget(group[0])->setFocus();
  panel.press(Qt::Key_Down);
  EXPECT_TRUE(panel.control(group[1]).isOn());
  EXPECT_FALSE(panel.control(group[0]).isOn());
  EXPECT_EQ(QApplication::focusWidget(), panel.widget(group[1]));
  panel.press(Qt::Key_Down);
  EXPECT_TRUE(panel.control(group[2]).isOn());
  panel.press(Qt::Key_Up);
  EXPECT_TRUE(panel.control(group[1]).isOn());
  EXPECT_EQ(QApplication::focusWidget(), panel.widget(group[1]));
  const QStringList names = stops();
  EXPECT_EQ(names.filter(QStringLiteral("ib_admin_rbutton")), QStringList(QString::fromUtf8(group[1])));
}

TEST_F(Keyboard, ReturnWithNothingToApplyDoesNothing) {
  openEverything();
  panel.press(Qt::Key_Return);
  EXPECT_FALSE(desktop.launched("\"apply\""));
}

TEST_F(Keyboard, EscapeClosesAndSoDoTheKeysForIt) {
  for (const auto& [key, modifiers] : {std::pair{Qt::Key_Escape, Qt::KeyboardModifiers()},
                                       std::pair{Qt::Key_Q, Qt::KeyboardModifiers(Qt::ControlModifier)},
                                       std::pair{Qt::Key_W, Qt::KeyboardModifiers(Qt::ControlModifier)}}) {
    panel.window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&panel.window));
    panel.press(key, modifiers);
    EXPECT_FALSE(panel.window.isVisible()) << key;
  }
}

TEST_F(Keyboard, EscapeOfAPopUpClosesThePopUpAlone) {
  openEverything();
  panel.choosePage("admin", "Image");
  auto* popUp = panel.as<QComboBox>("ib_admin_popup_imgMode");
  QTest::mouseClick(popUp, Qt::LeftButton);
  panel.settle();
  QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
  panel.settle();
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  EXPECT_TRUE(panel.window.isVisible());
}

TEST_F(Keyboard, WhatTheKeysReachIsScrolledIntoSight) {
  openEverything();
  panel.window.resize(panel.window.width(), 1);  // as low as it goes
  panel.choosePage("admin", "Notifications");
  panel.widget("ib_admin_popup_ntfShow")->setFocus();
  panel.settle();
  EXPECT_FALSE(panel.widget("ib_admin_popup_ntfShow")->visibleRegion().isEmpty());
}

class Wheel : public SimulatedPanel {
 protected:
  // Whether turning the wheel over the control changes it, and scrolls its page.
  std::pair<bool, bool> turn(const char* outlet) {
    Control& model = panel.control(outlet);
    const auto value = [&model] { return std::pair(model.doubleValue(), model.indexOfSelectedItem()); };
    QScrollBar* bar = nullptr;
    for (auto* area : panel.window.findChildren<QScrollArea*>()) {
      if (area->isAncestorOf(panel.widget(outlet))) bar = area->verticalScrollBar();
    }
    bar->setValue(0);
    const auto before = value();
    panel.turnWheel(panel.widget(outlet));
    return {value() != before, bar->value() != 0};
  }
};

TEST_F(Wheel, ScrollsThePageOverWhatItDoesNotChange) {
  openEverything();
  panel.window.resize(panel.window.width(), 1);  // as low as it goes
  panel.choosePage("admin", "Image");
  panel.control("ib_admin_popup_imgMode").selectItemAtIndex(1);
  const auto scrolls = std::pair(false, true);
  EXPECT_EQ(turn("ib_admin_popup_imgMode"), scrolls);
  EXPECT_EQ(turn("ib_admin_slider_imgDept"), scrolls);
  panel.widget("ib_admin_popup_imgMode")->setFocus();
  EXPECT_EQ(turn("ib_admin_popup_imgMode"), scrolls) << "a closed pop-up, focus or not";
}

TEST_F(Wheel, MovesASliderThatHasTheFocus) {
  openEverything();
  panel.choosePage("admin", "Image");
  panel.widget("ib_admin_slider_imgDept")->setFocus();
  EXPECT_TRUE(turn("ib_admin_slider_imgDept").first);
}

}  // namespace
}  // namespace norvik::desktop
