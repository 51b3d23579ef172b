// Reads the file by lines; writes it anew with one more, and without the oldest entries where there are too
// many.
#include "src/frontends/shared/history/history.h"

#include <algorithm>
#include <utility>

#include "src/adapters/services/kept_copies.h"
#include "src/frontends/shared/history/history_lines.h"
#include "src/frontends/shared/language/language.h"

namespace norvik {

namespace {

// A line that is as good as its entry, for those who only count.
bool isEntryLine(std::string_view line) {
  return entryOf(line).has_value();
}

std::vector<std::string_view> linesIn(std::string_view bytes) {
  std::vector<std::string_view> lines;
  while (!bytes.empty()) {
    const std::size_t end = bytes.find('\n');
    lines.push_back(bytes.substr(0, end));
    bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
  }
  return lines;
}

// The lines with the new one, without the oldest entries. What is no entry stays.
std::string withLine(const std::string& bytes, const std::string& line) {
  std::vector<std::string_view> lines = linesIn(bytes);
  if (lines.size() >= kMostHistoryEntries) {
    auto entries = static_cast<std::size_t>(std::ranges::count_if(lines, isEntryLine));
    std::erase_if(lines, [&entries](std::string_view each) {
      if (entries < kMostHistoryEntries || !isEntryLine(each)) return false;
      --entries;
      return true;
    });
  }
  std::string result;
  result.reserve(bytes.size() + line.size() + 2);
  for (const std::string_view each : lines) result.append(each).push_back('\n');
  return result + line + '\n';
}

}  // namespace

HistoryReading readHistory(UserState& state) {
  HistoryReading reading;
  const FileContent content = state.read(kHistoryFile);
  if (content.kind != FileKind::regular && content.kind != FileKind::missing) {
    reading.unreadable = content.reason;
    return reading;
  }
  for (const std::string_view line : linesIn(content.bytes)) {
    if (auto entry = entryOf(line)) {
      reading.entries.push_back(std::move(*entry));
    } else {
      ++reading.skipped;
    }
  }
  std::ranges::reverse(reading.entries);
  return reading;
}

std::string History::record(const RecordedChange& change) {
  const HistoryEntry entry{rfc3339(state_.now()), frontEnd_, state_.userName(), "", change};
  const std::string line = lineOf(entry);
  const std::string why =
      state_.update(kHistoryFile, [&line](const std::string& bytes) { return withLine(bytes, line); });
  if (why.empty()) return "";
  return sentence("The change is not in the history, as {1} could not be written: {2}.",
                  {state_.placeOf(kHistoryFile), why});
}

}  // namespace norvik
