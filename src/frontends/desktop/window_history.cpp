// The shared reversal says what to enter; the shared edits enter it.
#include "src/frontends/desktop/window_history.h"

#include "src/frontends/desktop/more_menu.h"
#include "src/frontends/shared/history/reversal.h"
#include "src/server/mac/text/join.h"

namespace norvik::desktop {

WindowHistory::WindowHistory(SettingsWindow& window, WindowChanges& changes, WindowBack& edits,
                             UserState& state, Platform& computer)
    : window_(window), changes_(changes), edits_(edits), state_(state), computer_(computer) {
  window_.moreMenu().setEntry(MoreEntry::history, [this] { showHistory(); });
}

void WindowHistory::showHistory() {
  HistoryReading reading = readHistory(state_);
  const std::string place = state_.placeOf(kHistoryFile);
  std::string note;
  if (!reading.unreadable.empty()) {
    note = sentence(history_texts::kUnreadable, {place, reading.unreadable});
  } else if (reading.skipped > 0) {
    note = counted(history_texts::kSkipped, reading.skipped, {place});
  } else if (reading.entries.empty()) {
    note = translated(history_texts::kEmpty);
  }
  HistoryDialog dialog(&window_, window_.interface(),
                       {std::move(reading.entries), std::move(note),
                        [this](const HistoryEntry& entry) { return look(entry); }});
  const bool isUndone = dialog.exec() == QDialog::Accepted && dialog.chosen() != nullptr;
  if (isUndone) undo(HistoryEntry(*dialog.chosen()));
}

HistoryDialog::Chosen WindowHistory::look(const HistoryEntry& entry) {
  HistoryDialog::Chosen chosen;
  chosen.rows = historyRows(computer_, window_.interface(), entry.change.settings);
  const Reversal reversal =
      reversalOf(computer_, window_.interface(), entry.change.settings, ChangedAgain::leftAlone);
  window_.refresh();  // shadows have used what the panes of a process share
  chosen.canUndo = reversal.errors.empty() && !reversal.empty();
  chosen.note = joined(reversal.notes, "\n");
  if (!reversal.errors.empty()) {
    chosen.note = reversal.errors.front().sentence;
  } else if (!chosen.canUndo && chosen.note.empty()) {
    chosen.note = translated(history_texts::kNothingToUndo);
  }
  chosen.note = withLabels(chosen.note, window_.interface());
  return chosen;
}

void WindowHistory::undo(const HistoryEntry& entry) {
  const Reversal reversal =
      reversalOf(computer_, window_.interface(), entry.change.settings, ChangedAgain::leftAlone);
  window_.refresh();
  std::vector<std::string> notes = reversal.notes;
  if (!edits_.enter(reversal, notes)) return;
  notes.insert(notes.begin(), translated(history_texts::kUndone));
  changes_.say({MessageKind::note, joined(notes, " "), {}, {}}, {}, nullptr);
  changes_.showChanges();
}

}  // namespace norvik::desktop
