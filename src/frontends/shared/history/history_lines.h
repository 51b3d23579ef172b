// Entries of the history as lines of JSON, and settings with two values as the objects in them. For the
// sources that read and write the user's files; includes the JSON library.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "src/frontends/shared/history/history.h"

namespace norvik {

// Without a line feed.
std::string lineOf(const HistoryEntry& entry);
// Nothing for a line that is no entry, whatever it is.
std::optional<HistoryEntry> entryOf(std::string_view line);

nlohmann::ordered_json recordedJson(const std::vector<RecordedSetting>& settings);
// Nothing where it is not as recordedJson writes it.
std::optional<std::vector<RecordedSetting>> recordedIn(const nlohmann::ordered_json& list);

}  // namespace norvik
