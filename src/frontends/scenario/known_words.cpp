// Distances between words.
#include "src/frontends/scenario/known_words.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

#include "src/adapters/simulated/text_form.h"

namespace norvik::scenario {

namespace {

// How many characters have to be put in, taken out, changed or swapped with their neighbour.
std::size_t distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> before, previous, row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 1; i <= a.size(); ++i) {
    before = previous;
    previous = row;
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const bool same = a[i - 1] == b[j - 1];
      row[j] = std::min({previous[j] + 1, row[j - 1] + 1, previous[j - 1] + (same ? 0u : 1u)});
      const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (swapped) row[j] = std::min(row[j], before[j - 2] + 1);
    }
  }
  return row[b.size()];
}

}  // namespace

std::string_view nearest(std::string_view word, const std::vector<std::string_view>& known) {
  const auto closer = [word](std::string_view a, std::string_view b) {
    return distance(word, a) < distance(word, b);
  };
  const auto found = std::min_element(known.begin(), known.end(), closer);
  return found == known.end() ? std::string_view() : *found;
}

void throwUnknown(std::string_view kind, std::string_view word, const std::vector<std::string_view>& known) {
  std::string message = "unknown " + std::string(kind) + ' ' + quoted(word);
  const std::string_view proposal = nearest(word, known);
  if (!proposal.empty()) message += "; did you mean " + quoted(proposal) + '?';
  throw Malformed(message);
}

}  // namespace norvik::scenario
