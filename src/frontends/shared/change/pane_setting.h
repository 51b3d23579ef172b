// A setting on a pane: its description and the controls that hold it, read as text, with its type or as a
// number, and changed as a person changes them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "src/frontends/shared/interface/setting_description.h"
#include "src/server/mac/pane/pane.h"

namespace norvik {

using SettingValue = std::variant<std::string, bool, int64_t>;

// The value of a choice of which no button is on: "none".
inline constexpr int64_t kNoChoice = -1;

class PaneSetting {
 public:
  // `pane` is borrowed. Every control of the description has to be an outlet of the pane.
  PaneSetting(SettingDescription description, NVKServerPrefs& pane);

  const SettingDescription& description() const { return description_; }
  const std::string& name() const { return description_.name; }
  // In the order of the description; more than one for a choice.
  const std::vector<Control*>& controls() const { return controls_; }

  // Whether a person can see it at all.
  bool isShown() const;

  // What it holds: "on", "4073", "High", "console"; "none" for a choice of which no button is on.
  std::string text() const;
  // The same with its type: a box is true or false, a number a number.
  SettingValue typedValue() const;
  // The same for a value that it does not hold yet.
  std::string textOf(int64_t value) const;
  SettingValue typedValueOf(int64_t value) const;
  // As checkedValue gives it; nothing where what it holds is no such value.
  std::optional<int64_t> value() const;

  // Makes it hold a checked value, without sending the action.
  void put(int64_t value);
  // The control that a person clicks to give it this value.
  Control& controlFor(int64_t value) const;

 private:
  SettingDescription description_;
  std::vector<Control*> controls_;
};

// Every setting of the description that the pane shows, in the order of the pages.
std::vector<PaneSetting> paneSettings(const InterfaceDescription& interface, NVKServerPrefs& pane);

// The title of a group of pages in the pane's sidebar: "Current User" for "user". The group itself before the
// pane is awake.
std::string groupTitle(const NVKServerPrefs& pane, const std::string& group);

}  // namespace norvik
