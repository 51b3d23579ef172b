// Pixels that several tests use, and how messages of failed tests show a pixel.
#pragma once

#include <ostream>

#include "src/server/mac/ui/image.h"

namespace norvik {

inline constexpr Pixel kClear{};
inline constexpr Pixel kWhite{255, 255, 255, 255};
inline constexpr Pixel kGrey{128, 128, 128, 255};

inline void PrintTo(const Pixel& pixel, std::ostream* out) {
  *out << '{' << int{pixel.red} << ", " << int{pixel.green} << ", " << int{pixel.blue} << ", "
       << int{pixel.alpha} << '}';
}

}  // namespace norvik
