// Reads and writes a setting by the kind of its control.
#include "src/frontends/shared/change/pane_setting.h"

#include <algorithm>

#include "src/frontends/shared/checks/value_check.h"
#include "src/server/mac/text/trim.h"

namespace norvik {

PaneSetting::PaneSetting(SettingDescription description, NVKServerPrefs& pane)
    : description_(std::move(description)) {
  for (const ControlDescription* control : description_.controls) {
    controls_.push_back(pane.outlet(control->outlet));
  }
}

bool PaneSetting::isShown() const {
  return std::ranges::none_of(controls_, [](const Control* c) { return c->isHidden() || c->isRemoved(); });
}

std::optional<int64_t> PaneSetting::value() const {
  const Control& control = *controls_.front();
  switch (control.kind()) {
    case ControlKind::checkBox:
      return control.state();
    case ControlKind::radioButton: {
      const auto on = std::ranges::find_if(controls_, [](const Control* button) { return button->isOn(); });
      if (on == controls_.end()) return std::nullopt;
      return on - controls_.begin();
    }
    case ControlKind::popUp:
      return control.indexOfSelectedItem();
    case ControlKind::slider:
      return control.truncatedValue();
    default:
      return wholeNumber(trimmed(control.stringValue(), kBlanks));
  }
}

std::string PaneSetting::text() const {
  const Control& control = *controls_.front();
  if (control.kind() == ControlKind::textField) return control.stringValue();
  const auto held = value();
  return held ? textOf(*held) : "none";
}

std::string PaneSetting::textOf(int64_t value) const {
  const ControlDescription& first = description_.first();
  const auto isIndexOf = [&](const auto& list) {
    return value >= 0 && value < static_cast<int64_t>(list.size());
  };
  const auto index = static_cast<std::size_t>(value);
  switch (first.kind) {
    case ControlKind::checkBox:
      return value == kOnState ? "on" : value == kOffState ? "off" : "mixed";
    case ControlKind::radioButton:
      return isIndexOf(description_.controls) ? description_.controls[index]->choice : "none";
    case ControlKind::popUp:
      return isIndexOf(first.items) ? first.items[index] : "item " + std::to_string(value + 1);
    default:
      return std::to_string(value);
  }
}

SettingValue PaneSetting::typedValue() const {
  const auto held = value();
  return held ? typedValueOf(*held) : SettingValue(text());
}

SettingValue PaneSetting::typedValueOf(int64_t value) const {
  const ControlKind kind = description_.first().kind;
  if (kind == ControlKind::checkBox) return value == kOnState;
  const bool isNumber = kind == ControlKind::slider || kind == ControlKind::textField;
  return isNumber ? SettingValue(value) : SettingValue(textOf(value));
}

void PaneSetting::put(int64_t value) {
  if (!description_.isChoice()) return controls_.front()->setIntegerValue(value);
  for (std::size_t i = 0; i < controls_.size(); ++i) {
    controls_[i]->setState(static_cast<int64_t>(i) == value ? kOnState : kOffState);
  }
}

Control& PaneSetting::controlFor(int64_t value) const {
  return description_.isChoice() ? *controls_.at(static_cast<std::size_t>(value)) : *controls_.front();
}

std::vector<PaneSetting> paneSettings(const InterfaceDescription& interface, NVKServerPrefs& pane) {
  std::vector<PaneSetting> settings;
  for (SettingDescription& description : settingsOf(interface)) {
    PaneSetting setting(std::move(description), pane);
    if (setting.isShown()) settings.push_back(std::move(setting));
  }
  return settings;
}

std::string groupTitle(const NVKServerPrefs& pane, const std::string& group) {
  for (const ConfBarNode& root : pane.m_confBarRoots.value_or(std::vector<ConfBarNode>())) {
    if (root.texts.front() == group) return root.texts.back();
  }
  return group;
}

}  // namespace norvik
