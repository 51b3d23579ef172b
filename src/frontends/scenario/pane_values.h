// The pane's fields and new-value accessors by their names.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "src/server/mac/pane/pane.h"

namespace norvik::scenario {

struct PaneValue {
  std::string_view name;
  std::function<std::string(const NVKServerPrefs& pane)> form;
};

std::span<const PaneValue> paneFields();
std::span<const PaneValue> paneAccessors();

}  // namespace norvik::scenario
