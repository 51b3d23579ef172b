// The lists that a program saves again and again while a test kills it or makes its file operations fail. The
// test knows from a file's bytes whether one of them is there whole.
#pragma once

#include <string>

#include "src/server/mac/platform/property_list.h"

namespace norvik {

// Lists of different lengths, none longer than 4096 bytes, which is what a file takes or keeps as one piece.
inline PropertyList savedList(int number) {
  const auto length = static_cast<std::size_t>(number * 37 % 11) * 200;
  return PropertyList::Dictionary{{"Number", int64_t{number}},
                                  {"Text", std::string(length, static_cast<char>('a' + number % 26))},
                                  {"Foreign", PropertyList::Array{PropertyList("kept"), PropertyList(0.1)}}};
}

}  // namespace norvik
