// How wide a text is on a terminal.
#pragma once

#include <cstddef>
#include <string_view>

namespace norvik::command {

// In cells: a Chinese or Japanese character takes two, a mark over another one none. A byte that is no text
// takes one.
std::size_t displayWidth(std::string_view text);

}  // namespace norvik::command
