// The words, in the order of the codes.
#include "src/frontends/shared/change/failure.h"

#include <algorithm>
#include <array>
#include <utility>

namespace norvik {

namespace {

constexpr std::array<std::string_view, 13> kWords = {
    "",       "usage",     "wrong-value", "damaged",      "server",    "software",    "not-written",
    "output", "try-again", "not-allowed", "not-settable", "cancelled", "interrupted",
};

}  // namespace

std::string_view codeWord(FailureCode code) {
  return kWords.at(static_cast<std::size_t>(code));
}

std::optional<FailureCode> codeOfWord(std::string_view word) {
  const auto* found = std::ranges::find(kWords, word);
  if (word.empty() || found == kWords.end()) return std::nullopt;
  return static_cast<FailureCode>(found - kWords.begin());
}

ChangeError failure(FailureCode code, std::string sentence, std::string setting) {
  return {code, std::move(sentence), std::move(setting), "", ""};
}

}  // namespace norvik
