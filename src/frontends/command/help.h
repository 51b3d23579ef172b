// The help texts, from the tables of commands and options.
#pragma once

#include <iosfwd>
#include <vector>

#include "src/frontends/command/command_table.h"
#include "src/frontends/shared/interface/setting_description.h"

namespace norvik::command {

// All commands and options.
void writeHelp(std::ostream& out);

// One command, its arguments and its options; and the settings, where it changes them.
void writeHelp(std::ostream& out, const Command& command, const std::vector<SettingDescription>& settings);

// Whether the command's help lists the settings.
bool listsSettings(const Command& command);

}  // namespace norvik::command
