// The completion script for bash, made from what the program itself knows, so that it cannot lag behind.
#pragma once

#include <string>
#include <vector>

#include "src/frontends/shared/interface/setting_description.h"

namespace norvik::command {

// The whole script, to be sourced by bash, with the settings, their values and their pages.
std::string bashCompletion(const std::vector<SettingDescription>& settings);

}  // namespace norvik::command
