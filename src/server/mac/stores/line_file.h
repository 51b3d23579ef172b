// Text files as lists of lines, and lines as lists of pieces.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace norvik {

// Lines without their ends, UTF-8.
using StringsArray = std::vector<std::string>;

// A line split at its white space; no piece is empty. The pieces point into the line.
std::vector<std::string_view> piecesOf(std::string_view line);

}  // namespace norvik
