// A small off-screen image with the compositing operations that the tinted button needs, so that its look can
// be computed, and tested pixel by pixel, without a toolkit.
#pragma once

#include <cstdint>
#include <vector>

#include "src/server/mac/platform/geometry.h"

namespace norvik {

// Eight bits a component, the colour components multiplied by alpha.
struct Pixel {
  uint8_t red = 0;
  uint8_t green = 0;
  uint8_t blue = 0;
  uint8_t alpha = 0;
  bool operator==(const Pixel&) const = default;
};

// The toolkit's numbers.
enum class CompositingOperation {
  sourceOver = 2,   // the source on top of what is there
  sourceIn = 3,     // the source, where something is there
  plusDarker = 11,  // adds up coverage, and the darkness of both
};

class Image {
 public:
  // All clear. Sizes below 1 hold no pixel.
  Image(int width, int height);

  int width() const { return width_; }
  int height() const { return height_; }

  // Whether row 0 is the top row; it is the bottom row of an image that is not flipped, as a new one is. No
  // operation turns an image over: rows are combined by their numbers, so all images of one drawing have to
  // be flipped as the view that they are drawn for.
  bool isFlipped() const { return flipped_; }
  void setFlipped(bool flipped) { flipped_ = flipped; }

  // Clear outside the image.
  Pixel pixel(int x, int y) const;
  // Nothing outside the image.
  void setPixel(int x, int y, Pixel pixel);

  // Composites `source` with its first pixel at (x, y), its alpha multiplied by `opacity` (0 to 1).
  void draw(const Image& source, int x, int y, CompositingOperation operation, double opacity);
  // Composites a colour over the part of `rect` that lies within the image.
  void fill(const Rect& rect, const Color& color, CompositingOperation operation);

 private:
  int width_ = 0;
  int height_ = 0;
  bool flipped_ = false;
  std::vector<Pixel> pixels_;
};

// One pixel of an operation; both pixels and the result are premultiplied.
Pixel composite(CompositingOperation operation, Pixel source, Pixel destination);

// A colour as a pixel, each component rounded to the nearest.
Pixel premultiplied(const Color& color);

}  // namespace norvik
