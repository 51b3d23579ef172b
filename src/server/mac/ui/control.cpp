// The state of the controls; their observer is notified only of real changes.
#include "src/server/mac/ui/control.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

namespace norvik {

void View::addSubview(View& view) {
  view.removeFromSuperview();
  view.superview_ = this;
  subviews_.push_back(&view);
}

void View::removeFromSuperview() {
  if (superview_ == nullptr) return;
  std::erase(superview_->subviews_, this);
  superview_ = nullptr;
  didLeaveSuperview();
}

void Control::describe(std::string_view outlet, const ControlDescription& description) {
  name_ = outlet;
  kind_ = description.kind;
  value_ = description.value.value_or(0);
  title_ = description.title;
}

template <typename Property, typename Value>
void Control::change(Property& property, const Value& value) {
  if (property == value) return;
  property = value;
  notifyObserver();
}

void Control::notifyObserver() {
  if (observer_ != nullptr) observer_->controlChanged(*this);
}

void Control::setEnabled(bool enabled) {
  change(enabled_, enabled);
}
void Control::setHidden(bool hidden) {
  change(hidden_, hidden);
}
void Control::setState(int state) {
  change(state_, state);
}
void Control::setDoubleValue(double value) {
  change(value_, value);
}
void Control::selectItemAtIndex(int64_t index) {
  change(index_, index);
}
void Control::setStringValue(std::string_view text) {
  change(text_, text);
}
void Control::setTitle(std::string_view title) {
  change(title_, title);
}
void Control::setImage(const PictureRef& image) {
  change(image_, image);
}
void Control::setTransparent(bool transparent) {
  change(transparent_, transparent);
}

void Control::didLeaveSuperview() {
  change(removed_, true);
}

int64_t Control::truncatedValue() const {
  const float value = std::trunc(static_cast<float>(value_));
  constexpr float kLimit = 9223372036854775808.0f;  // 2 to the 63rd
  if (!(value >= -kLimit && value < kLimit)) return std::numeric_limits<int64_t>::min();
  return static_cast<int64_t>(value);
}

void Control::setIntegerValue(int64_t number) {
  switch (kind_) {
    case ControlKind::checkBox:
    case ControlKind::radioButton:
      return setState(static_cast<int>(number));
    case ControlKind::slider:
      return setDoubleValue(static_cast<double>(number));
    case ControlKind::popUp:
      return selectItemAtIndex(number);
    default: {
      char digits[24];
      const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
      return setStringValue(std::string_view(digits, static_cast<std::size_t>(end - digits)));
    }
  }
}

}  // namespace norvik
