// The tables of kinds and actions.
#include "src/frontends/shared/interface/window_texts.h"

namespace norvik {

namespace {

struct KindRow {
  MessageKind kind;
  std::string_view word;
};
constexpr KindRow kKinds[] = {
    {MessageKind::done, "Done"},      {MessageKind::note, "Note"},          {MessageKind::warning, "Warning"},
    {MessageKind::failure, "Failed"}, {MessageKind::progress, "Under way"},
};

struct ActionRow {
  MessageAction action;
  std::string_view title;
};
constexpr ActionRow kActions[] = {
    {MessageAction::retry, "Retry"},
    {MessageAction::keep, "Keep"},
    {MessageAction::revert, "Revert"},
    {MessageAction::showDetails, "Show Details…"},
    {MessageAction::restoreCopy, window_texts::kRestoreCopy},
    {MessageAction::takeUp, "Apply Stored Settings"},
    {MessageAction::chooseValues, "Choose Values…"},
    {MessageAction::showSetting, "Show Setting"},
};

}  // namespace

std::string_view wordOf(MessageKind kind) {
  for (const KindRow& row : kKinds) {
    if (row.kind == kind) return row.word;
  }
  return {};
}

std::string_view titleOf(MessageAction action) {
  for (const ActionRow& row : kActions) {
    if (row.action == action) return row.title;
  }
  return {};
}

}  // namespace norvik
