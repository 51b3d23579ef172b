// The history of a user's changes: a file with an object of JSON on each line, the newest last, that every
// front end adds to. Lines that are no entries are left where they are.
//
//   {"norvikChange": 1, "time": "2024-05-01T12:00:00Z", "frontEnd": "window", "user": "anna",
//    "settings": [{"name": "nvk.port", "old": 4073, "new": 5000}], "outcome": "ok",
//    "saved": ["server settings"], "notSaved": []}
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "src/adapters/services/user_state.h"
#include "src/frontends/shared/history/change_records.h"

namespace norvik {

inline constexpr const char* kHistoryFile = "history.jsonl";
// Where there are more entries, the oldest are dropped.
inline constexpr std::size_t kMostHistoryEntries = 1000;

struct HistoryEntry {
  std::string time;      // RFC 3339, UTC
  std::string frontEnd;  // "window", "pane" or "norvikctl"
  std::string user;
  std::string outcome;    // "ok", or the word of the failure
  RecordedChange change;  // its outcome is that of the word, or none for a word that is not known
};

struct HistoryReading {
  std::vector<HistoryEntry> entries;  // the newest first
  std::size_t skipped = 0;            // lines that are no entries
  std::string unreadable;             // why the file could not be read; empty where it was, or is missing
};
HistoryReading readHistory(UserState& state);

// Adds each change to the history.
class History : public ChangeRecords {
 public:
  // Borrows the state. `frontEnd` is the name of who made them, in the entries.
  History(UserState& state, std::string frontEnd) : state_(state), frontEnd_(std::move(frontEnd)) {}

  std::string record(const RecordedChange& change) override;

 private:
  UserState& state_;
  const std::string frontEnd_;
};

}  // namespace norvik
