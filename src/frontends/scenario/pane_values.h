// The pane's fields and new-value accessors by their names.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "src/server/mac/pane/pane.h"

namespace norvik::scenario {

struct PaneValue {
  std::string_view name;
  std::string (*form)(const NVKServerPrefs& pane);
};

std::span<const PaneValue> paneFields();
std::span<const PaneValue> paneAccessors();

}  // namespace norvik::scenario
