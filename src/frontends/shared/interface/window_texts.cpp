// The tables of kinds and actions.
#include "src/frontends/shared/interface/window_texts.h"

namespace norvik {

namespace {

struct KindRow {
  MessageKind kind;
  std::string_view word;
};
constexpr KindRow kKinds[] = {
    {MessageKind::done, english("Done")},          {MessageKind::note, english("Note")},
    {MessageKind::warning, english("Warning")},    {MessageKind::failure, english("Failed")},
    {MessageKind::progress, english("Under way")},
};

struct ActionRow {
  MessageAction action;
  std::string_view title;
};
constexpr ActionRow kActions[] = {
    {MessageAction::retry, english("Retry")},
    {MessageAction::keep, english("Keep")},
    {MessageAction::revert, english("Revert")},
    {MessageAction::showDetails, english("Show Details…")},
    {MessageAction::restoreCopy, window_texts::kRestoreCopy},
    {MessageAction::takeUp, english("Apply Stored Settings")},
    {MessageAction::chooseValues, english("Choose Values…")},
    {MessageAction::showSetting, english("Show Setting")},
};

}  // namespace

std::string wordOf(MessageKind kind) {
  for (const KindRow& row : kKinds) {
    if (row.kind == kind) return translated(row.word);
  }
  return {};
}

std::string titleOf(MessageAction action) {
  for (const ActionRow& row : kActions) {
    if (row.action == action) return translated(row.title);
  }
  return {};
}

}  // namespace norvik
