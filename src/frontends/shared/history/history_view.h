// The history as a person reads it: who made a change, what came of it, and what each of its settings is
// now. Makes texts; changes nothing.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "src/frontends/shared/history/history.h"
#include "src/frontends/shared/language/language.h"
#include "src/server/mac/platform/platform.h"
#include "src/server/mac/ui/interface_description.h"

namespace norvik {

namespace history_texts {

inline constexpr std::string_view kTitle = english("History");
inline constexpr std::string_view kEntries = english("Changes, the newest first");
inline constexpr std::string_view kSettings = english("Settings of the chosen change");
inline constexpr std::string_view kWhenColumn = english("When");
inline constexpr std::string_view kFrontEndColumn = english("Where");
inline constexpr std::string_view kWhatColumn = english("What");
inline constexpr std::string_view kOutcomeColumn = english("Outcome");
inline constexpr std::string_view kThenColumn = english("Then");
inline constexpr std::string_view kNowColumn = english("Now");
inline constexpr std::string_view kSinceColumn = english("Since");
inline constexpr std::string_view kUndo = english("Undo…");
inline constexpr std::string_view kUndoHelp =
    english("Enters the old values and shows what Apply would change. Nothing is saved before Apply.");
inline constexpr std::string_view kEmpty = english("Nothing was changed yet.");
inline constexpr std::string_view kNothingToUndo = english("Nothing of this change is left to take back.");
inline constexpr std::string_view kUndone =
    english("The old values are entered. Apply saves them; nothing is saved yet.");
// {1} is the file, {2} the reason.
inline constexpr std::string_view kUnreadable = english("The history, {1}, cannot be read: {2}.");
// {2} is the file.
inline constexpr CountedText kSkipped =
    englishCounted("{1} line of {2} is no entry; it is left where it is.",
                   "{1} lines of {2} are no entries; they are left where they are.");

}  // namespace history_texts

// A setting of an entry beside what is stored now.
struct HistoryRow {
  std::string label, page;
  std::string then;      // "4073 → 5000"
  std::string now;       // empty where this computer does not have it
  std::string since;     // "Still so", "Taken back", "Changed again"
  bool differs = false;  // from what the change made it
};

// Asks a shadow of a pane, so a front end whose own pane is awake refreshes it afterwards.
std::vector<HistoryRow> historyRows(Platform& computer, const InterfaceDescription& interface,
                                    const std::vector<RecordedSetting>& settings);

// "Settings window", "System Preferences", "Command line"; another program's name as it is.
std::string frontEndWords(std::string_view frontEnd);
// "Saved", "Partly saved", "Not saved: not-allowed".
std::string outcomeWords(const HistoryEntry& entry);
// "Port number (Norvik clients)", or how many settings there are.
std::string whatWords(const HistoryEntry& entry, const InterfaceDescription& interface);

}  // namespace norvik
