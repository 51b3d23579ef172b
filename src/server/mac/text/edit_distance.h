// How far two words are apart, for proposing the word that was probably intended.
#pragma once

#include <cstddef>
#include <string_view>

namespace norvik {

// How many bytes have to be added, removed, replaced or swapped with their neighbour to get from one word to
// the other.
std::size_t editDistance(std::string_view a, std::string_view b);

}  // namespace norvik
