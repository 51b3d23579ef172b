// The words around profiles that the windows show: the questions before an export and an import, and what
// came of them. Knows no toolkit.
#pragma once

#include <string_view>

#include "src/frontends/shared/language/language.h"

namespace norvik::profile_texts {

// ---- Export

inline constexpr std::string_view kExportTitle = english("Export Settings");
inline constexpr std::string_view kExportText =
    english("The settings are written to a file, from which other computers can take them over.");
inline constexpr std::string_view kAllSettings = english("All settings");
// {1} is the page's title.
inline constexpr std::string_view kThisPage = english("The settings of the page {1}");
inline constexpr std::string_view kChangedOnly = english("Only those that differ from their defaults");
inline constexpr CountedText kUnapplied =
    englishCounted("{1} change that is not applied is exported as it is shown.",
                   "{1} changes that are not applied are exported as they are shown.");
inline constexpr std::string_view kExport = english("Export…");
inline constexpr std::string_view kFileKind = english("Settings files (*.json)");
// {2} is the file.
inline constexpr CountedText kExported =
    englishCounted("{1} setting was exported to {2}.", "{1} settings were exported to {2}.");
inline constexpr CountedText kLeftOut =
    englishCounted("{1} setting has no value of its own and is left out.",
                   "{1} settings have no value of their own and are left out.");
// {1} is the file, {2} the reason.
inline constexpr std::string_view kNotWritten = english("{1} could not be written: {2}.");
inline constexpr std::string_view kDamagedNotExported = english("{1} is damaged. Nothing was exported.");

// ---- Import

inline constexpr std::string_view kImportTitle = english("Import Settings");
// {1} is the file.
inline constexpr std::string_view kImportText = english("What {1} would change:");
inline constexpr std::string_view kImportHelp =
    english("Shows what the file would change. Nothing is changed before Apply.");
inline constexpr std::string_view kNothingDiffers =
    english("The settings are as {1} has them. There is nothing to take over.");
inline constexpr std::string_view kUnnamed = english("Settings that the file does not name");
inline constexpr std::string_view kUnnamedStay = english("stay as they are");
inline constexpr std::string_view kUnnamedToDefaults = english("go to their defaults");
inline constexpr std::string_view kNeedsLock =
    english("Some of these settings are the administrator's. Take Over opens the lock for them.");
inline constexpr std::string_view kTakeOver = english("Take Over");
inline constexpr std::string_view kTakenOver =
    english("The settings of {1} are entered. Apply saves them; nothing is saved yet.");
// {1} is the file, {2} the reason.
inline constexpr std::string_view kNotRead = english("{1} could not be read: {2}. Nothing is changed.");
inline constexpr std::string_view kNoFile = english("it is no file");
// {1} is the file, {2} what is wrong, with its line.
inline constexpr std::string_view kFault = english("{1} cannot be imported: {2} Nothing is changed.");
// {1} is the number of faults, {2} the file.
inline constexpr CountedText kFaults =
    englishCounted("{2} cannot be imported: {1} thing in it is wrong. Nothing is changed.",
                   "{2} cannot be imported: {1} things in it are wrong. Nothing is changed.");

}  // namespace norvik::profile_texts
