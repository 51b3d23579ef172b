// Looks names up in tables, and suggests the nearest one for a misspelt name.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "src/frontends/scenario/malformed.h"

namespace norvik::scenario {

// The known word with the fewest edits, the first of several; empty if none is known.
std::string_view nearest(std::string_view word, const std::vector<std::string_view>& known);

// `unknown KIND "WORD"; did you mean "KNOWN"?`
[[noreturn]] void throwUnknown(std::string_view kind, std::string_view word,
                               const std::vector<std::string_view>& known);

// The row with that name, in a table of rows that have a `name`; Malformed if there is none.
template <typename Row>
const Row& rowNamed(std::string_view kind, std::string_view word, std::span<const Row> table) {
  std::vector<std::string_view> known;
  for (const Row& row : table) {
    if (row.name == word) return row;
    known.push_back(row.name);
  }
  throwUnknown(kind, word, known);
}

}  // namespace norvik::scenario
