// A small screen with two windows, as it would look on a computer that connects: a picture of what image
// quality, colour depth and shadow size do. It is computed, always the same for the same values, and an
// illustration: the server's own compression is not used. Pure computation; knows no toolkit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace norvik {

struct SampleSettings {
  int quality = 2;  // 0 low, 1 medium, 2 high
  int depth = 8;    // bits of each colour, 4 to 8
  int shadow = 0;   // 0 to 72

  bool operator==(const SampleSettings&) const = default;
};

// Rows from the top, four bytes a pixel: red, green, blue and 255.
struct SamplePicture {
  int width = 0;
  int height = 0;
  std::vector<uint8_t> bytes;
};

// The size at scale 1, where a point is one pixel.
inline constexpr int kSampleWidth = 320;
inline constexpr int kSampleHeight = 144;

// `scale` is from 1 to 4; the picture is that many times as large and shows the same. Values outside their
// ranges count as the nearest end.
SamplePicture drawSampleScreen(const SampleSettings& settings, int scale);

}  // namespace norvik
