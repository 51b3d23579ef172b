// Compositing arithmetic on eight-bit premultiplied pixels.
#include "src/server/mac/ui/image.h"

#include <algorithm>
#include <cmath>

namespace norvik {

namespace {

// a times b over 255, rounded.
uint8_t scaled(int a, int b) {
  return static_cast<uint8_t>((a * b + 127) / 255);
}

uint8_t component(double value) {
  return static_cast<uint8_t>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
}

uint8_t saturated(int value) {
  return static_cast<uint8_t>(std::clamp(value, 0, 255));
}

// How much darker than white of its own coverage a component is; plus darker adds these up and takes them
// from the coverage of the result.
uint8_t plusDarker(int source, int sourceAlpha, int destination, int destinationAlpha, int alpha) {
  return saturated(alpha - (sourceAlpha - source) - (destinationAlpha - destination));
}

Pixel sourceOver(Pixel s, Pixel d) {
  const int rest = 255 - s.alpha;
  return {saturated(s.red + scaled(d.red, rest)), saturated(s.green + scaled(d.green, rest)),
          saturated(s.blue + scaled(d.blue, rest)), saturated(s.alpha + scaled(d.alpha, rest))};
}

Pixel multiplied(Pixel p, int factor) {
  return {scaled(p.red, factor), scaled(p.green, factor), scaled(p.blue, factor), scaled(p.alpha, factor)};
}

}  // namespace

Pixel composite(CompositingOperation operation, Pixel s, Pixel d) {
  switch (operation) {
    case CompositingOperation::sourceIn:
      return multiplied(s, d.alpha);
    case CompositingOperation::plusDarker: {
      const uint8_t alpha = saturated(s.alpha + d.alpha);
      return {plusDarker(s.red, s.alpha, d.red, d.alpha, alpha),
              plusDarker(s.green, s.alpha, d.green, d.alpha, alpha),
              plusDarker(s.blue, s.alpha, d.blue, d.alpha, alpha), alpha};
    }
    case CompositingOperation::sourceOver:
      break;
  }
  return sourceOver(s, d);
}

Pixel premultiplied(const Color& color) {
  const double alpha = std::clamp(color.alpha, 0.0, 1.0);
  return {component(color.red * alpha), component(color.green * alpha), component(color.blue * alpha),
          component(alpha)};
}

Image::Image(int width, int height)
    : width_(std::max(width, 0)),
      height_(std::max(height, 0)),
      pixels_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_)) {}

Pixel Image::pixel(int x, int y) const {
  if (x < 0 || y < 0 || x >= width_ || y >= height_) return {};
  return pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                 static_cast<std::size_t>(x)];
}

void Image::setPixel(int x, int y, Pixel pixel) {
  if (x < 0 || y < 0 || x >= width_ || y >= height_) return;
  pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x)] =
      pixel;
}

void Image::draw(const Image& source, int x, int y, CompositingOperation operation, double opacity) {
  const int factor = component(opacity);
  for (int row = 0; row < source.height(); ++row) {
    for (int column = 0; column < source.width(); ++column) {
      const Pixel from = multiplied(source.pixel(column, row), factor);
      setPixel(x + column, y + row, composite(operation, from, pixel(x + column, y + row)));
    }
  }
}

void Image::fill(const Rect& rect, const Color& color, CompositingOperation operation) {
  const Pixel from = premultiplied(color);
  const int left = static_cast<int>(std::floor(std::max(rect.x, 0.0)));
  const int top = static_cast<int>(std::floor(std::max(rect.y, 0.0)));
  const int right = static_cast<int>(std::ceil(std::min(rect.x + rect.width, double(width_))));
  const int bottom = static_cast<int>(std::ceil(std::min(rect.y + rect.height, double(height_))));
  for (int row = top; row < bottom; ++row) {
    for (int column = left; column < right; ++column) {
      setPixel(column, row, composite(operation, from, pixel(column, row)));
    }
  }
}

}  // namespace norvik
