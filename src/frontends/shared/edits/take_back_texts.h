// The words of the ways back: what a row's menu and button, and the menu beside Help, offer. Knows no
// toolkit.
#pragma once

#include <string_view>

#include "src/frontends/shared/language/language.h"

namespace norvik::take_back_texts {

// ---- A row

// {1} is the value that the row gets.
inline constexpr std::string_view kToStored = english("Back to what is stored ({1})");
inline constexpr std::string_view kToDefault = english("Back to the default ({1})");
// For a setting whose value nothing can name.
inline constexpr std::string_view kToDefaultUnnamed = english("Back to the default");
// {1} is the setting, {2} the value.
inline constexpr std::string_view kButtonName = english("{1}: back to {2}");
inline constexpr std::string_view kButtonHelp = english("Takes this change back. Nothing is saved.");

// ---- The menu beside Help

inline constexpr std::string_view kMore = english("More");
inline constexpr std::string_view kMoreHelp =
    english("Ways back, the history, profiles, and the change as a command.");
inline constexpr std::string_view kTakeBackPage = english("Take back this page's changes");
inline constexpr std::string_view kTakeBackAll = english("Take back all changes");
inline constexpr std::string_view kPageToDefaults = english("This page to its defaults");
inline constexpr std::string_view kAllToDefaults = english("All settings to their defaults");
inline constexpr std::string_view kHistory = english("History…");
inline constexpr std::string_view kExport = english("Export…");
inline constexpr std::string_view kImport = english("Import…");
inline constexpr std::string_view kCopyCommand = english("Copy as command");

// ---- What is said afterwards

inline constexpr std::string_view kLockedStay =
    english("Settings behind the lock stay as they are. Open the lock to change them.");

}  // namespace norvik::take_back_texts
