// Row by row; a swap looks two rows back.
#include "src/server/mac/text/edit_distance.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace norvik {

std::size_t editDistance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> before, previous, row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 1; i <= a.size(); ++i) {
    before = previous;
    previous = row;
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = previous[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      row[j] = std::min({previous[j] + 1, row[j - 1] + 1, replaced});
      const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (swapped) row[j] = std::min(row[j], before[j - 2] + 1);
    }
  }
  return row[b.size()];
}

}  // namespace norvik
