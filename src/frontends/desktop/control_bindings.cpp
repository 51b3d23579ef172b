// The bindings of what a person reads or presses: labels, addresses, push buttons, the lock; and which kind
// of control has which binding.
#include <QLabel>
#include <QPushButton>

#include "src/frontends/desktop/address_label.h"
#include "src/frontends/desktop/binding.h"
#include "src/frontends/desktop/editor_bindings.h"
#include "src/frontends/desktop/lock_button.h"
#include "src/frontends/desktop/mnemonic_click.h"
#include "src/frontends/desktop/mnemonics.h"
#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/language/pane_texts.h"

namespace norvik::desktop {

namespace {

// A text that nobody edits: a label's, or that of a field that only shows its value. Its accessible name
// includes the value, since a screen reader reads the name in place of the text.
class LabelBinding : public Binding {
 public:
  LabelBinding(NVKServerPrefs& pane, Control& model, const ControlDescription& description, QWidget* parent)
      : Binding(pane, model, description), label_(new QLabel(parent)) {
    label_->setTextFormat(Qt::PlainText);
    label_->setWordWrap(description.kind == ControlKind::label);
    attach(label_);
  }

 private:
  void showValue() override {
    const std::string words = paneText(control().stringValue());
    const QString value = text(words);
    if (value == value_) return;
    value_ = value;
    label_->setText(value);
    label_->setAccessibleName(text(sentence("{1}: {2}", {description().label, words})));
  }
  QLabel* label_;
  QString value_;  // the label's own text may have a mnemonic in it
};

class AddressBinding : public Binding {
 public:
  AddressBinding(NVKServerPrefs& pane, Control& model, const ControlDescription& description, QWidget* parent)
      : Binding(pane, model, description),
        label_(new AddressLabel(text(model.name()), text(description.copyTitle), parent)) {
    attach(label_);
  }

 private:
  void showValue() override { label_->setText(text(paneText(control().stringValue()))); }
  AddressLabel* label_;
};

class PushButtonBinding : public Binding {
 public:
  PushButtonBinding(NVKServerPrefs& pane, Control& model, const ControlDescription& description,
                    QWidget* parent)
      : Binding(pane, model, description), button_(new QPushButton(parent)) {
    button_->setAutoDefault(false);
    clickAtMnemonic(button_);
    // A transparent button keeps its place, so that the page does not jump when it appears.
    QSizePolicy policy = button_->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    button_->setSizePolicy(policy);
    attach(button_);
    QObject::connect(button_, &QPushButton::clicked, button_, [this] { sendAction(); });
  }

 private:
  bool isDrawn() const override { return isVisible() && !control().isTransparent(); }
  void showValue() override {
    const QString title = text(paneText(control().title()));
    if (title == title_) return;
    title_ = title;
    button_->setText(withoutMnemonic(title));
    button_->setAccessibleName(title);
  }
  QPushButton* button_;
  QString title_;  // the button's own text may have a mnemonic in it
};

class LockButtonBinding : public Binding {
 public:
  LockButtonBinding(NVKServerPrefs& pane, Control& model, const ControlDescription& description,
                    QWidget* parent)
      : Binding(pane, model, description), button_(new LockButton(static_cast<NVKButton&>(model), parent)) {
    attach(button_);
    QObject::connect(button_, &QAbstractButton::clicked, button_, [this] { sendAction(); });
  }

 private:
  void showValue() override { button_->showModel(); }
  LockButton* button_;
};

}  // namespace

std::unique_ptr<Binding> makeBinding(NVKServerPrefs& pane, Control& control,
                                     const ControlDescription& description, QWidget* parent) {
  switch (description.kind) {
    case ControlKind::textField:
      if (!description.displayOnly) return makeEditorBinding(pane, control, description, parent);
      return std::make_unique<LabelBinding>(pane, control, description, parent);
    case ControlKind::label:
      if (description.copyTitle.empty())
        return std::make_unique<LabelBinding>(pane, control, description, parent);
      return std::make_unique<AddressBinding>(pane, control, description, parent);
    case ControlKind::pushButton:
      return std::make_unique<PushButtonBinding>(pane, control, description, parent);
    case ControlKind::lockButton:
      return std::make_unique<LockButtonBinding>(pane, control, description, parent);
    default:
      return makeEditorBinding(pane, control, description, parent);
  }
}

}  // namespace norvik::desktop
