// Each kind of editor: the model's value into the widget, a person's edit back into the model.
#include "src/frontends/desktop/editor_bindings.h"

#include <QAbstractItemView>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

#include "src/frontends/desktop/caret_blink_timeout.h"
#include "src/frontends/desktop/mnemonic_click.h"
#include "src/frontends/desktop/mnemonics.h"
#include "src/frontends/desktop/number_field.h"
#include "src/frontends/desktop/valued_slider.h"
#include "src/frontends/desktop/wheel_filter.h"

namespace norvik::desktop {

namespace {

class CheckBoxBinding : public Binding {
 public:
  CheckBoxBinding(NVKServerPrefs& pane, Control& model, const ControlDescription& description,
                  QWidget* parent)
      : Binding(pane, model, description),
        box_(new QCheckBox(withoutMnemonic(text(description.label)), parent)) {
    clickAtMnemonic(box_);
    attach(box_);
    QObject::connect(box_, &QCheckBox::clicked, box_, [this](bool on) {
      box_->setTristate(false);
      control().setState(on ? kOnState : kOffState);
      sendAction();
    });
  }

 private:
  void showValue() override {
    const Qt::CheckState states[] = {Qt::PartiallyChecked, Qt::Unchecked, Qt::Checked};
    const Qt::CheckState state = states[control().state() + 1];
    if (box_->checkState() != state) box_->setCheckState(state);
  }
  QCheckBox* box_;
};

class RadioButtonBinding : public Binding {
 public:
  RadioButtonBinding(NVKServerPrefs& pane, Control& model, const ControlDescription& description,
                     QWidget* parent)
      : Binding(pane, model, description),
        button_(new QRadioButton(withoutMnemonic(text(description.label)), parent)) {
    button_->setAutoExclusive(true);  // which makes it a radio button to a screen reader
    clickAtMnemonic(button_);
    attach(button_);
    QObject::connect(button_, &QRadioButton::clicked, button_, [this] {
      control().setState(kOnState);
      sendAction();
    });
  }

 private:
  // The model decides which button of the group is on. It may be none, which an exclusive group does not
  // allow.
  void showValue() override {
    if (button_->isChecked() == control().isOn()) return;
    QButtonGroup* group = button_->group();
    if (group != nullptr) group->setExclusive(false);
    button_->setAutoExclusive(false);
    button_->setChecked(control().isOn());
    button_->setAutoExclusive(true);
    if (group != nullptr) group->setExclusive(true);
  }
  QRadioButton* button_;
};

class SliderBinding : public Binding {
 public:
  SliderBinding(NVKServerPrefs& pane, Control& model, const ControlDescription& description, QWidget* parent)
      : Binding(pane, model, description), slider_(new ValuedSlider(description, parent)) {
    slider_->setRange(static_cast<int>(description.minimum.value_or(0)),
                      static_cast<int>(description.maximum.value_or(0)));
    if (description.tickMarks > 1) {
      slider_->setTickPosition(QSlider::TicksBelow);
      slider_->setTickInterval((slider_->maximum() - slider_->minimum()) / (description.tickMarks - 1));
    }
    slider_->setPageStep(std::max(1, slider_->tickInterval()));
    WheelFilter::install(slider_, WheelFilter::kWithoutFocus);
    attach(slider_);
    QObject::connect(slider_, &QSlider::valueChanged, slider_, [this](int value) {
      control().setDoubleValue(value);
      sendAction();
    });
  }

 private:
  // The model keeps a value outside the range; the widget then shows the nearest end.
  void showValue() override {
    const QSignalBlocker quiet(slider_);
    const double nearest = std::clamp(std::trunc(control().doubleValue()), double(slider_->minimum()),
                                      double(slider_->maximum()));
    slider_->setValue(static_cast<int>(nearest));
    slider_->showValue(control().truncatedValue());
  }
  ValuedSlider* slider_;
};

class PopUpBinding : public Binding {
 public:
  PopUpBinding(NVKServerPrefs& pane, Control& model, const ControlDescription& description, QWidget* parent)
      : Binding(pane, model, description), popUp_(new QComboBox(parent)) {
    for (const std::string& item : description.items) popUp_->addItem(translatedText(item));
    popUp_->setFocusPolicy(Qt::StrongFocus);
    WheelFilter::install(popUp_, WheelFilter::kAlways);
    attach(popUp_);
    popUp_->view()->setAccessibleName(text(description.label));
    QObject::connect(popUp_, &QComboBox::activated, popUp_, [this](int index) {
      control().selectItemAtIndex(index);
      sendAction();
    });
  }

 private:
  // No item is shown for an index that none has.
  void showValue() override {
    const int64_t index = control().indexOfSelectedItem();
    popUp_->setCurrentIndex(index >= 0 && index < popUp_->count() ? static_cast<int>(index) : -1);
  }
  QComboBox* popUp_;
};

// A field as wide as what is typed into it.
QLineEdit* makeField(const ControlDescription& description, QWidget* parent) {
  if (description.maximum) {
    const QString largest = QString::number(static_cast<int64_t>(*description.maximum));
    return new NumberField(static_cast<int>(largest.size()), parent);
  }
  auto* field = new QLineEdit(parent);
  field->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  return field;
}

// What is typed counts at once; it sends no action: the pane's next tick notices it.
class TextFieldBinding : public Binding {
 public:
  TextFieldBinding(NVKServerPrefs& pane, Control& model, const ControlDescription& description,
                   QWidget* parent)
      : Binding(pane, model, description), field_(makeField(description, parent)) {
    CaretBlinkTimeout::install(field_);
    attach(field_);
    QObject::connect(field_, &QLineEdit::textEdited, field_, [this](const QString& typed) {
      control().setStringValue(typed.toStdString());
      notifyEdited();
    });
  }

 private:
  void showValue() override {
    const QString value = text(control().stringValue());
    if (field_->text() != value) field_->setText(value);
  }
  QLineEdit* field_;
};

}  // namespace

std::unique_ptr<Binding> makeEditorBinding(NVKServerPrefs& pane, Control& control,
                                           const ControlDescription& description, QWidget* parent) {
  switch (description.kind) {
    case ControlKind::checkBox:
      return std::make_unique<CheckBoxBinding>(pane, control, description, parent);
    case ControlKind::radioButton:
      return std::make_unique<RadioButtonBinding>(pane, control, description, parent);
    case ControlKind::slider:
      return std::make_unique<SliderBinding>(pane, control, description, parent);
    case ControlKind::popUp:
      return std::make_unique<PopUpBinding>(pane, control, description, parent);
    case ControlKind::textField:
      return std::make_unique<TextFieldBinding>(pane, control, description, parent);
    default:
      return nullptr;
  }
}

}  // namespace norvik::desktop
