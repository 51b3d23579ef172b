// The settings of an interface description by their names: which controls "nvk.port" has and what kind of
// value it takes. Reads only the description; knows no pane and no toolkit.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "src/server/mac/ui/interface_description.h"

namespace norvik {

// A tab's label in its two parts: "user:Image".
struct PageName {
  std::string group;  // "user" or "admin"
  std::string title;  // "Image"
};
PageName pageName(const TabDescription& tab);

struct SettingDescription {
  std::string name;  // "nvk.port"
  PageName page;     // that it is on
  // The control that holds the value; for a choice the radio buttons in their order. Never empty; borrowed
  // from the description.
  std::vector<const ControlDescription*> controls;

  const ControlDescription& first() const { return *controls.front(); }
  bool isChoice() const { return first().kind == ControlKind::radioButton; }
  // Only an administrator may change it.
  bool isAdministrators() const { return page.group != "user"; }
};

// Every setting that is shown to people, in the order of the pages.
std::vector<SettingDescription> settingsOf(const InterfaceDescription& interface);

// What a person reads at the setting: the label of its control, for a choice that of the box over its
// buttons.
std::string labelOf(const SettingDescription& setting, const InterfaceDescription& interface);

}  // namespace norvik
