// Each entry has texts of several ranks. A word's rank is the best of the texts that have it, and an entry's
// is the worst of its words.
#include "src/frontends/shared/search/setting_search.h"

#include <algorithm>
#include <cctype>
#include <optional>

#include "src/frontends/shared/language/language.h"
#include "src/server/mac/text/edit_distance.h"

namespace norvik {

namespace {

using Words = std::vector<std::string>;

// Shorter words would be found nearly everywhere.
constexpr std::size_t kLeastWithError = 4;

// A byte of a letter beyond ASCII is part of a word too.
bool isInWord(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return std::isalnum(byte) != 0 || byte >= 0x80;
}

Words foldedWordsOf(std::string_view text) {
  Words words;
  bool isInside = false;
  for (const char c : text) {
    if (!isInWord(c)) {
      isInside = false;
      continue;
    }
    if (!isInside) words.emplace_back();
    isInside = true;
    words.back() += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  }
  return words;
}

// In the order in which they count. The number of one that is found with an error is one more.
enum Rank { kLabel = 0, kName = 2, kSynonym = 4, kValue = 6, kHelp = 8 };

struct RankedText {
  Rank rank;
  std::string text;
};

struct Entry {
  SearchHit hit;
  std::vector<RankedText> texts;
};

// The beginning of `word` with at most one letter more, less, other or swapped.
bool isNearly(const std::string& wanted, const std::string& word) {
  if (wanted.size() < kLeastWithError) return false;
  for (const std::size_t length : {wanted.size() - 1, wanted.size(), wanted.size() + 1}) {
    if (length <= word.size() && editDistance(wanted, std::string_view(word).substr(0, length)) <= 1)
      return true;
  }
  return false;
}

std::optional<int> rankIn(const std::string& wanted, const RankedText& text) {
  std::optional<int> rank;
  for (const std::string& word : foldedWordsOf(text.text)) {
    if (word.starts_with(wanted)) return text.rank;
    if (isNearly(wanted, word)) rank = text.rank + 1;
  }
  return rank;
}

std::optional<int> rankOf(const Words& wanted, const Entry& entry) {
  int worst = 0;
  for (const std::string& word : wanted) {
    std::optional<int> best;
    for (const RankedText& text : entry.texts) {
      const auto rank = rankIn(word, text);
      if (rank && (!best || *rank < *best)) best = rank;
    }
    if (!best) return std::nullopt;
    worst = std::max(worst, *best);
  }
  return worst;
}

Entry entryOf(const SettingDescription& setting, const InterfaceDescription& interface,
              const std::string& value) {
  Entry entry{{setting.page, setting.name, labelOf(setting, interface), setting.first().outlet}, {}};
  entry.texts = {{kLabel, entry.hit.label},   {kName, setting.name},
                 {kHelp, setting.page.title}, {kValue, value},
                 {kValue, translated(value)}, {kHelp, translated(setting.page.title)}};
  for (const ControlDescription* control : setting.controls) {
    entry.texts.push_back({kLabel, control->label});
    entry.texts.push_back({kHelp, control->help});
    for (const std::string& item : control->items) {
      entry.texts.push_back({kValue, item});
      entry.texts.push_back({kValue, translated(item)});
    }
    for (const std::string& synonym : control->synonyms) entry.texts.push_back({kSynonym, synonym});
  }
  return entry;
}

// Pages first, so that they stay in front of settings of the same rank.
std::vector<Entry> entriesOf(const InterfaceDescription& interface, const ValueOf& valueOf) {
  std::vector<Entry> entries;
  for (const TabDescription& tab : interface.tabs) {
    const PageName page = pageName(tab);
    const std::string title = translated(page.title);
    entries.push_back({{page, "", title, ""}, {{kLabel, title}, {kLabel, page.title}}});
  }
  for (const SettingDescription& setting : settingsOf(interface)) {
    if (const auto value = valueOf(setting.name)) entries.push_back(entryOf(setting, interface, *value));
  }
  return entries;
}

}  // namespace

std::vector<SearchHit> findSettings(const InterfaceDescription& interface, std::string_view text,
                                    const ValueOf& valueOf) {
  const Words wanted = foldedWordsOf(text);
  if (wanted.empty()) return {};
  std::vector<std::pair<int, SearchHit>> found;
  for (const Entry& entry : entriesOf(interface, valueOf)) {
    if (const auto rank = rankOf(wanted, entry)) found.emplace_back(*rank, entry.hit);
  }
  std::ranges::stable_sort(found, {}, [](const auto& each) { return each.first; });
  std::vector<SearchHit> hits;
  hits.reserve(found.size());
  for (auto& [rank, hit] : found) hits.push_back(std::move(hit));
  return hits;
}

}  // namespace norvik
