// The words, in the order of the codes.
#include "src/frontends/shared/change/failure.h"

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

ChangeError failure(FailureCode code, std::string sentence, std::string setting) {
  return {code, std::move(sentence), std::move(setting), "", ""};
}

}  // namespace norvik
