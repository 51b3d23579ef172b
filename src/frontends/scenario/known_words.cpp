// The nearest word, and the message that proposes it.
#include "src/frontends/scenario/known_words.h"

#include <algorithm>

#include "src/server/mac/text/edit_distance.h"
#include "src/server/mac/text/escape.h"

namespace norvik::scenario {

std::string_view nearest(std::string_view word, const std::vector<std::string_view>& known) {
  const auto closer = [word](std::string_view a, std::string_view b) {
    return editDistance(word, a) < editDistance(word, b);
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
