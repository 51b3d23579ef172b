// What all bindings share: identity, accessible texts, enabled and shown.
#include "src/frontends/desktop/binding.h"

#include <utility>

#include "src/frontends/shared/language/language.h"

namespace norvik::desktop {

QString text(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString translatedText(std::string_view english) {
  return text(translated(english));
}

Binding::Binding(NVKServerPrefs& pane, Control& control, const ControlDescription& description)
    : pane_(pane), control_(control), description_(description) {}

Binding::~Binding() {
  control_.setObserver(nullptr);
}

void Binding::attach(QWidget* widget) {
  widget_ = widget;
  widget->setObjectName(text(control_.name()));
  widget->setAccessibleName(text(description_.label));
  widget->setAccessibleDescription(text(description_.help));
  widget->setToolTip(text(description_.help));
  control_.setObserver(this);
  showState();
}

void Binding::setOffered(bool isOffered) {
  if (std::exchange(isOffered_, isOffered) != isOffered) showState();
}

void Binding::controlChanged(Control& /*control*/) {
  showState();
  if (changed) changed();
}

void Binding::showState() {
  widget_->setEnabled(control_.isEnabled() && isOffered_);
  widget_->setVisible(isDrawn());
  showValue();
}

void Binding::sendAction() {
  if (command) {
    command();
  } else {
    pane_.buttonClicked(control_);
  }
  showState();  // an action may have restored the control's value, which notifies no observer
  notifyEdited();
}

void Binding::notifyEdited() {
  if (edited) edited();
}

}  // namespace norvik::desktop
