// Rectangles and colours of the interface, in points and in premultiplication-free components.
#pragma once

namespace norvik {

struct Size {
  double width = 0;
  double height = 0;
  bool operator==(const Size&) const = default;
};

struct Rect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
  bool operator==(const Rect&) const = default;
};

// Components from 0 to 1; the colour components are not multiplied by alpha.
struct Color {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 0;
  bool operator==(const Color&) const = default;
};

// The fully transparent colour.
inline constexpr Color kClearColor{};

}  // namespace norvik
