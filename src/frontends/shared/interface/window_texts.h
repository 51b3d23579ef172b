// The words that every window shows around its pages: buttons, headings and fixed sentences, in one table, so
// that two windows say the same. Sentences made from values are in window_messages.h. Knows no toolkit.
#pragma once

#include <string_view>

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
std::string_view wordOf(MessageKind kind);
// "Retry", "Show Details…".
std::string_view titleOf(MessageAction action);

namespace window_texts {

// ---- Buttons

inline constexpr std::string_view kApply = "Apply";
inline constexpr std::string_view kDiscard = "Discard";
inline constexpr std::string_view kCancel = "Cancel";
inline constexpr std::string_view kClose = "Close";
inline constexpr std::string_view kCloseMessage = "Close message";
inline constexpr std::string_view kContinue = "Continue";
inline constexpr std::string_view kGoToSetting = "Go to Setting";
inline constexpr std::string_view kTakeBack = "Take Back";
inline constexpr std::string_view kTakeBackAll = "Take Back All";
inline constexpr std::string_view kRestoreCopy = "Restore Copy";
inline constexpr std::string_view kReplaceFile = "Replace File";

// ---- The list of pending changes

inline constexpr std::string_view kChangesTitle = "Changes";
inline constexpr std::string_view kChangesHelp = "Shows what Apply would change, run and tell.";
inline constexpr std::string_view kNoChanges = "Nothing is changed.";
inline constexpr std::string_view kSettingColumn = "Setting";
inline constexpr std::string_view kPageColumn = "Page";
inline constexpr std::string_view kOldColumn = "Now";
inline constexpr std::string_view kNewColumn = "After Apply";
inline constexpr std::string_view kReasonColumn = "Why";
inline constexpr std::string_view kConsequencesHeading = "What follows";
inline constexpr std::string_view kFilesHeading = "Files that are written";
inline constexpr std::string_view kCommandsHeading = "Commands that run as the super-user";
inline constexpr std::string_view kToldHeading = "Who is told";
inline constexpr std::string_view kEndsConnections = "Connections to this computer end.";
inline constexpr std::string_view kNeedsRestart = "The computer has to be restarted.";

inline constexpr std::string_view kSaving = "Saving the settings.";

// ---- Settings that somebody else has changed too

inline constexpr std::string_view kCollisionTitle = "Changed by Somebody Else Too";
inline constexpr std::string_view kCollisionText =
    "Somebody else has saved other values for these settings while you were changing them. Choose a value for each.";
inline constexpr std::string_view kLoadedColumn = "Before";
inline constexpr std::string_view kTheirsColumn = "Theirs";
inline constexpr std::string_view kMineColumn = "Yours";
inline constexpr std::string_view kKeepMine = "Keep Mine";
inline constexpr std::string_view kTakeTheirs = "Take Theirs";

// ---- Damaged files

inline constexpr std::string_view kDamagedTitle = "Damaged Settings File";
inline constexpr std::string_view kDefaultsShown = "The values shown are the defaults.";
inline constexpr std::string_view kLastReadShown = "The values shown are those that could be read last.";
inline constexpr std::string_view kSomeDefaultsShown =
    "The values shown are those that could be read last, or the defaults.";
inline constexpr std::string_view kReplaceText =
    "Replace File writes the values that this window shows. The damaged file is kept beside it.";
inline constexpr std::string_view kRestoreText = "Restore Copy begins with the copy of";  // a time follows
inline constexpr std::string_view kNothingSaved = "Nothing was saved.";

// ---- Leaving

inline constexpr std::string_view kLeaveTitle = "Apply Changes?";

// ---- Help

inline constexpr std::string_view kNoBrowserTitle = "No Web Browser";
inline constexpr std::string_view kNoBrowserText =
    "This computer has no program that opens the page. Its address is:";

// ---- The lock

inline constexpr std::string_view kUnlockDenied =
    "The lock was not opened: administrator rights were not granted.";
inline constexpr std::string_view kNothingChanged = "Nothing was changed.";

}  // namespace window_texts
}  // namespace norvik
