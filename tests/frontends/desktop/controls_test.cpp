// Every control of every page: found by its outlet's name, showing what the model holds, and used by a real
// click, key or drag.
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTest>

#include "src/frontends/desktop/address_label.h"
#include "tests/frontends/desktop/simulated_panel.h"

namespace norvik::desktop {
namespace {

std::vector<std::string> outletsOf(ControlKind kind) {
  std::vector<std::string> outlets;
  const InterfaceDescription interface = shippedInterface();
  for (const ControlDescription* control : interface.controls()) {
    const bool shown = !control->hidden && control->outlet.find("gldMode") == std::string::npos;
    if (control->kind == kind && !control->displayOnly && shown) outlets.push_back(control->outlet);
  }
  return outlets;
}

class EachControl : public SimulatedPanel {
 public:
  // Calls `test` with every outlet of that kind, on its page, where it can be used.
  void each(ControlKind kind, void (EachControl::*test)(const char* outlet)) {
    openEverything();
    const auto outlets = outletsOf(kind);
    ASSERT_FALSE(outlets.empty());
    for (const std::string& outlet : outlets) {
      SCOPED_TRACE(outlet);
      panel.choosePageOf(outlet.c_str());
      ASSERT_TRUE(panel.widget(outlet.c_str())->isVisible());
      ASSERT_TRUE(panel.widget(outlet.c_str())->isEnabled());
      (this->*test)(outlet.c_str());
    }
  }

  void box(const char* outlet) {
    auto* box = panel.as<QCheckBox>(outlet);
    Control& model = panel.control(outlet);
    for (const int state : {kOffState, kOnState}) {
      model.setState(state);
      EXPECT_EQ(box->isChecked(), state == kOnState);
    }
    model.setState(kMixedState);
    EXPECT_EQ(box->checkState(), Qt::PartiallyChecked);
    model.setState(kOffState);
    panel.click(outlet);
    EXPECT_EQ(model.state(), kOnState);
    box->setFocus();
    panel.press(Qt::Key_Space);
    EXPECT_EQ(model.state(), kOffState);
    EXPECT_FALSE(box->isChecked());
    panel.click(outlet);
  }

  void radio(const char* outlet) {
    Control& model = panel.control(outlet);
    panel.click(outlet);
    EXPECT_TRUE(model.isOn());
    panel.click(outlet);
    EXPECT_TRUE(model.isOn()) << "a radio button that is on stays on";
    for (const std::string& other : outletsOf(ControlKind::radioButton)) {
      EXPECT_EQ(panel.as<QRadioButton>(other.c_str())->isChecked(), other == outlet) << other;
    }
    model.setState(kOffState);
    EXPECT_FALSE(panel.as<QRadioButton>(outlet)->isChecked());
    panel.widget(outlet)->setFocus();
    panel.press(Qt::Key_Space);
    EXPECT_TRUE(model.isOn());
  }

  void slider(const char* outlet) {
    auto* slider = panel.as<QSlider>(outlet);
    Control& model = panel.control(outlet);
    model.setDoubleValue(slider->maximum());
    EXPECT_EQ(slider->value(), slider->maximum());
    model.setDoubleValue(slider->minimum() + 0.99);
    EXPECT_EQ(slider->value(), slider->minimum()) << "the value is truncated";
    panel.drag(outlet, slider->minimum() + 2);
    EXPECT_EQ(model.doubleValue(), slider->minimum() + 2);
    slider->setFocus();
    panel.press(Qt::Key_Right);
    EXPECT_EQ(model.doubleValue(), slider->minimum() + 3);
    model.setDoubleValue(slider->maximum() + 9);
    EXPECT_EQ(slider->value(), slider->maximum());
    EXPECT_EQ(model.doubleValue(), slider->maximum() + 9) << "the model keeps a value outside the range";
    model.setDoubleValue(slider->minimum());
  }

  void popUp(const char* outlet) {
    auto* popUp = panel.as<QComboBox>(outlet);
    Control& model = panel.control(outlet);
    EXPECT_EQ(popUp->count(), static_cast<int>(panel.interface.find(outlet)->items.size()));
    model.selectItemAtIndex(0);
    EXPECT_EQ(popUp->currentIndex(), 0);
    model.selectItemAtIndex(99);
    EXPECT_EQ(popUp->currentIndex(), -1);
    panel.choose(outlet, 2);
    EXPECT_EQ(model.indexOfSelectedItem(), 2);
    popUp->setFocus();
    panel.press(Qt::Key_Up);
    EXPECT_EQ(model.indexOfSelectedItem(), 1);
  }

  void field(const char* outlet) {
    Control& model = panel.control(outlet);
    model.setStringValue("17");
    EXPECT_EQ(panel.as<QLineEdit>(outlet)->text(), QStringLiteral("17"));
    panel.type(outlet, QStringLiteral("5000"));
    EXPECT_EQ(model.stringValue(), "5000");
  }

  void label(const char* outlet) {
    if (auto* address = dynamic_cast<AddressLabel*>(panel.widget(outlet))) {
      panel.control(outlet).setStringValue("Here:\n\nhost.example.org:5000");
      EXPECT_EQ(address->address(), QStringLiteral("host.example.org:5000"));
    } else {
      panel.control(outlet).setStringValue("What is the case");
      EXPECT_EQ(panel.as<QLabel>(outlet)->text().remove(QLatin1Char('&')),
                QStringLiteral("What is the case"));
    }
  }
};

TEST_F(EachControl, ACheckBox) {
  Answers yes(QStringLiteral("Yes, Proceed"));
  each(ControlKind::checkBox, &EachControl::box);
}
TEST_F(EachControl, ARadioButton) {
  each(ControlKind::radioButton, &EachControl::radio);
}
TEST_F(EachControl, ASlider) {
  each(ControlKind::slider, &EachControl::slider);
}
TEST_F(EachControl, APopUp) {
  each(ControlKind::popUp, &EachControl::popUp);
}
TEST_F(EachControl, ATextField) {
  each(ControlKind::textField, &EachControl::field);
}
TEST_F(EachControl, ALabel) {
  each(ControlKind::label, &EachControl::label);
}

class Controls : public SimulatedPanel {};

TEST_F(Controls, HiddenControlsAreNotShown) {
  openEverything();
  for (const char* outlet : {"ib_admin_popup_gldMode", "ib_admin_label_gldMode",
                             "ib_admin_chkbox_testIntNotif", "ib_admin_chkbox_debug"}) {
    panel.choosePageOf(outlet);
    EXPECT_FALSE(panel.widget(outlet)->isVisible()) << outlet;
  }
}

TEST_F(Controls, ValuesThatNobodyEditsAreLabels) {
  openEverything();
  panel.choosePageOf("ib_admin_edbox_maxFSoft");
  EXPECT_EQ(panel.as<QLabel>("ib_admin_edbox_maxFSoft")->text(), QStringLiteral("1024"));
  EXPECT_EQ(panel.as<QLabel>("ib_admin_edbox_maxFHard")->text(), QStringLiteral("2048"));
  EXPECT_EQ(panel.widget("ib_admin_edbox_maxFSoft")->focusPolicy(), Qt::NoFocus);
}

TEST_F(Controls, PushButtonsSendTheirAction) {
  openEverything();
  panel.choosePage("admin", "Server");
  panel.click("ib_admin_button_dispManager");
  EXPECT_TRUE(desktop.launched("\"dspcmd\" \"manage\""));
  panel.click("ib_admin_button_accManager");
  EXPECT_TRUE(desktop.launched("\"admcmd\" \"manage\""));
  panel.choosePage("admin", "System");
  EXPECT_EQ(panel.as<QPushButton>("ib_admin_button_maxFAdjust")->text().remove(QLatin1Char('&')),
            QStringLiteral("Adjust"));
  panel.click("ib_admin_button_maxFAdjust");
  EXPECT_EQ(panel.as<QLabel>("ib_admin_edbox_maxFSoft")->text(), QStringLiteral("10240"));
  EXPECT_EQ(panel.as<QPushButton>("ib_admin_button_maxFAdjust")->text().remove(QLatin1Char('&')),
            QStringLiteral("Revert"));
  panel.click("ib_button_Help");
  ASSERT_EQ(desktop.opened.size(), 1u);
}

TEST_F(Controls, AnUnknownLimitHidesTheButtonAndKeepsItsPlace) {
  panel.control("ib_admin_button_maxFAdjust").setTransparent(true);
  openEverything();
  panel.choosePage("admin", "System");
  QWidget* button = panel.widget("ib_admin_button_maxFAdjust");
  EXPECT_TRUE(button->isVisible());
  const int height = button->parentWidget()->height();
  panel.control("ib_admin_button_maxFAdjust").setTransparent(true);
  panel.settle();
  EXPECT_FALSE(button->isVisible());
  EXPECT_EQ(button->parentWidget()->height(), height);
}

TEST_F(Controls, ASliderSaysItsValueAndNamesItsEnds) {
  openEverything();
  panel.choosePage("user", "Image");
  panel.control("ib_user_slider_imgShad").setDoubleValue(72);
  panel.settle();
  QStringList shown;
  for (const QLabel* label : panel.window.pages().front()->findChildren<QLabel*>()) {
    if (label->isVisible()) shown += label->text();
  }
  for (const char* words : {"72 of 72", "very wide", "None", "Large", "Fewer colours", "More colours"}) {
    EXPECT_TRUE(shown.contains(QString::fromUtf8(words))) << words;
  }
}

TEST_F(Controls, TheTypicalChange) {
  desktop.computer.service.setDaemon(77);
  panel.unlock();
  panel.choosePage("admin", "Norvik clients");
  panel.type("ib_admin_edbox_nvkPort", QStringLiteral("5000"));
  auto* address = static_cast<AddressLabel*>(panel.widget("ib_admin_label_nvkAddress"));
  EXPECT_TRUE(address->address().endsWith(QStringLiteral(":5000"))) << "shown before it is applied";
  panel.click("ib_button_Apply");
  EXPECT_TRUE(desktop.launched("\"apply\""));
  EXPECT_EQ(pane.m_admin_nvkPort, 5000);
  EXPECT_FALSE(panel.widget("ib_button_Apply")->isEnabled());
}

}  // namespace
}  // namespace norvik::desktop
