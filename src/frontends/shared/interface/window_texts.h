// The words that every window shows around its pages: buttons, headings and fixed sentences, in one table, so
// that two windows say the same. In English; shown with `translated`. Sentences made from values are in
// window_messages.h. Knows no toolkit.
#pragma once

#include <string>
#include <string_view>

#include "src/frontends/shared/language/language.h"

namespace norvik {

// What a message is about. Each has an icon, a colour and a word, so that none of them carries the meaning
// alone.
enum class MessageKind {
  done,      // what a person asked for has happened
  note,      // something that a person should know; nothing to do
  warning,   // something that needs attention soon
  failure,   // what a person asked for has not happened
  progress,  // something is under way
};

// What a person can do about a message, each a button in it.
enum class MessageAction {
  retry,         // the same again
  showDetails,   // what was run and what it said
  restoreCopy,   // of a damaged file
  takeUp,        // makes the server use what is stored
  chooseValues,  // of settings that somebody else has changed too
  showSetting,   // opens its page
  keep,          // what is in force on trial
  revert,        // takes it back now
};

// "Done", "Failed": for screen readers, before the sentence.
std::string wordOf(MessageKind kind);
// "Retry", "Show Details…".
std::string titleOf(MessageAction action);

namespace window_texts {

// ---- Buttons

inline constexpr std::string_view kApply = english("Apply");
inline constexpr std::string_view kDiscard = english("Discard");
inline constexpr std::string_view kCancel = english("Cancel");
inline constexpr std::string_view kClose = english("Close");
inline constexpr std::string_view kCloseMessage = english("Close message");
inline constexpr std::string_view kContinue = english("Continue");
inline constexpr std::string_view kGoToSetting = english("Go to Setting");
inline constexpr std::string_view kTakeBack = english("Take Back");
inline constexpr std::string_view kTakeBackAll = english("Take Back All");
inline constexpr std::string_view kRestoreCopy = english("Restore Copy");
inline constexpr std::string_view kReplaceFile = english("Replace File");

// ---- The list of pending changes

inline constexpr std::string_view kChangesTitle = english("Changes");
inline constexpr std::string_view kChangesHelp = english("Shows what Apply would change, run and tell.");
inline constexpr std::string_view kNoChanges = english("Nothing is changed.");
inline constexpr std::string_view kSettingColumn = english("Setting");
inline constexpr std::string_view kPageColumn = english("Page");
inline constexpr std::string_view kOldColumn = english("Now");
inline constexpr std::string_view kNewColumn = english("After Apply");
inline constexpr std::string_view kReasonColumn = english("Why");
inline constexpr std::string_view kConsequencesHeading = english("What follows");
inline constexpr std::string_view kFilesHeading = english("Files that are written");
inline constexpr std::string_view kCommandsHeading = english("Commands that run as the super-user");
inline constexpr std::string_view kToldHeading = english("Who is told");
inline constexpr std::string_view kEndsConnections = english("Connections to this computer end.");
inline constexpr std::string_view kNeedsRestart = english("The computer has to be restarted.");

inline constexpr std::string_view kSaving = english("Saving the settings.");

// ---- Settings that somebody else has changed too

inline constexpr std::string_view kCollisionTitle = english("Changed by Somebody Else Too");
inline constexpr std::string_view kCollisionText = english(
    "Somebody else has saved other values for these settings while you were changing them. Choose a value for each.");
inline constexpr std::string_view kLoadedColumn = english("Before");
inline constexpr std::string_view kTheirsColumn = english("Theirs");
inline constexpr std::string_view kMineColumn = english("Yours");
inline constexpr std::string_view kKeepMine = english("Keep Mine");
inline constexpr std::string_view kTakeTheirs = english("Take Theirs");

// ---- Damaged files

inline constexpr std::string_view kDamagedTitle = english("Damaged Settings File");
inline constexpr std::string_view kDefaultsShown = english("The values shown are the defaults.");
inline constexpr std::string_view kLastReadShown =
    english("The values shown are those that could be read last.");
inline constexpr std::string_view kSomeDefaultsShown =
    english("The values shown are those that could be read last, or the defaults.");
inline constexpr std::string_view kReplaceText =
    english("Replace File writes the values that this window shows. The damaged file is kept beside it.");
inline constexpr std::string_view kRestoreText =
    english("Restore Copy begins with the copy of {1}.");  // a time
inline constexpr std::string_view kNothingSaved = english("Nothing was saved.");

// ---- Leaving

inline constexpr std::string_view kLeaveTitle = english("Apply Changes?");

// ---- Help

inline constexpr std::string_view kNoBrowserTitle = english("No Web Browser");
inline constexpr std::string_view kNoBrowserText =
    english("This computer has no program that opens the page. Its address is:");

// ---- The lock

inline constexpr std::string_view kUnlockDenied =
    english("The lock was not opened: administrator rights were not granted.");
inline constexpr std::string_view kNothingChanged = english("Nothing was changed.");

}  // namespace window_texts
}  // namespace norvik
