// Shows pixels in the messages of failed tests.
#pragma once

#include <ostream>

#include "src/server/mac/ui/image.h"

namespace norvik {

inline void PrintTo(const Pixel& pixel, std::ostream* out) {
  *out << '{' << int{pixel.red} << ", " << int{pixel.green} << ", " << int{pixel.blue} << ", "
       << int{pixel.alpha} << '}';
}

}  // namespace norvik
