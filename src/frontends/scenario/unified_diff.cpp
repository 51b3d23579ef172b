// Finds the longest common lines and prints what differs in hunks.
#include "src/frontends/scenario/unified_diff.h"

#include <algorithm>
#include <cstddef>

namespace norvik::scenario {

namespace {

using Lines = std::vector<std::string>;

constexpr std::size_t kContext = 3;

// One line of the diff: ' ' in both, '-' only before, '+' only after.
struct Edit {
  char sign;
  const std::string* line;
};

// How many lines from (i, j) on are in common, for all i and j.
std::vector<std::vector<std::size_t>> commonLengths(const Lines& before, const Lines& after) {
  std::vector<std::vector<std::size_t>> common(before.size() + 1, std::vector<std::size_t>(after.size() + 1));
  for (std::size_t i = before.size(); i-- > 0;) {
    for (std::size_t j = after.size(); j-- > 0;) {
      common[i][j] =
          before[i] == after[j] ? common[i + 1][j + 1] + 1 : std::max(common[i + 1][j], common[i][j + 1]);
    }
  }
  return common;
}

std::vector<Edit> editsOf(const Lines& before, const Lines& after) {
  const auto common = commonLengths(before, after);
  std::vector<Edit> edits;
  std::size_t i = 0, j = 0;
  while (i < before.size() || j < after.size()) {
    if (i < before.size() && j < after.size() && before[i] == after[j]) {
      edits.push_back({' ', &before[i]});
      ++i, ++j;
    } else if (i < before.size() && (j == after.size() || common[i + 1][j] >= common[i][j + 1])) {
      edits.push_back({'-', &before[i++]});
    } else {
      edits.push_back({'+', &after[j++]});
    }
  }
  return edits;
}

// How many of the edits from `begin` to `end` do not have that sign.
std::size_t count(const std::vector<Edit>& edits, std::size_t begin, std::size_t end, char otherSign) {
  return static_cast<std::size_t>(std::count_if(edits.begin() + static_cast<std::ptrdiff_t>(begin),
                                                edits.begin() + static_cast<std::ptrdiff_t>(end),
                                                [=](const Edit& edit) { return edit.sign != otherSign; }));
}

std::string range(std::size_t first, std::size_t length) {
  return std::to_string(length == 0 ? first : first + 1) + ',' + std::to_string(length);
}

std::string hunk(const std::vector<Edit>& edits, std::size_t begin, std::size_t end) {
  std::string text = "@@ -" + range(count(edits, 0, begin, '+'), count(edits, begin, end, '+')) + " +" +
                     range(count(edits, 0, begin, '-'), count(edits, begin, end, '-')) + " @@\n";
  for (std::size_t i = begin; i < end; ++i) text += edits[i].sign + *edits[i].line + '\n';
  return text;
}

}  // namespace

std::string unifiedDiff(const Lines& before, const Lines& after, std::string_view beforeName,
                        std::string_view afterName) {
  const std::vector<Edit> edits = editsOf(before, after);
  std::string text;
  std::size_t i = 0;
  while (i < edits.size()) {
    if (edits[i].sign == ' ') {
      ++i;
      continue;
    }
    // A hunk continues as long as the next change is near.
    std::size_t last = i;
    for (std::size_t j = i; j < edits.size() && j <= last + 2 * kContext + 1; ++j) {
      if (edits[j].sign != ' ') last = j;
    }
    const std::size_t end = std::min(last + 1 + kContext, edits.size());
    text += hunk(edits, i - std::min(i, kContext), end);
    i = end;
  }
  if (text.empty()) return text;
  return "--- " + std::string(beforeName) + "\n+++ " + std::string(afterName) + '\n' + text;
}

}  // namespace norvik::scenario
