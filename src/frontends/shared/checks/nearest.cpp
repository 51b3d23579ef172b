// By the edit distance of two words.
#include "src/frontends/shared/checks/nearest.h"

#include <cstddef>

#include "src/frontends/shared/language/language.h"
#include "src/server/mac/text/edit_distance.h"

namespace norvik {

std::string nearestWord(std::string_view typed, const std::vector<std::string>& known) {
  std::string nearest;
  // Half of the letters wrong is another word.
  std::size_t least = typed.size() / 2 + 1;
  for (const std::string& word : known) {
    const std::size_t changes = editDistance(typed, word);
    if (changes >= least) continue;
    least = changes;
    nearest = word;
  }
  return nearest;
}

std::string suggestion(std::string_view typed, const std::vector<std::string>& known) {
  const std::string nearest = nearestWord(typed, known);
  return nearest.empty() ? "" : " " + sentence("Did you mean \"{1}\"?", {nearest});
}

}  // namespace norvik
