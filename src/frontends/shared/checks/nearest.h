// Finds the word that a misspelt one was probably meant to be.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace norvik {

// The known word nearest to what was typed, by the number of letters to change, add, remove or swap; empty
// where none is near.
std::string nearestWord(std::string_view typed, const std::vector<std::string>& known);

// " Did you mean \"nvk.port\"?", or nothing where no known word is near.
std::string suggestion(std::string_view typed, const std::vector<std::string>& known);

}  // namespace norvik
