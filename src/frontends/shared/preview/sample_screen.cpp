// Background, windows with their shadows and contents; then the loss of detail, in blocks as lossy
// compression has them; then the loss of colours. Whole numbers throughout, so that every computer draws the
// same.
#include "src/frontends/shared/preview/sample_screen.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace norvik {

namespace {

struct Rgb {
  int red = 0;
  int green = 0;
  int blue = 0;
};

struct Box {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

constexpr Rgb kPaper{250, 250, 252};
constexpr Rgb kInk{40, 44, 52};
constexpr Rgb kTitle{226, 229, 235};
constexpr Rgb kAccent{38, 110, 200};

constexpr Box kBack{18, 16, 168, 104};
constexpr Box kFront{142, 34, 152, 96};

constexpr int kParts = 256;      // of a mixture
constexpr int kDarkest = 130;    // of a shadow, right at its window, in those parts
constexpr int kShadowShare = 2;  // so many steps of the setting are one point of shadow

constexpr int kBlock = 8;  // side of a block, in points

class Canvas {
 public:
  explicit Canvas(int scale)
      : scale_(scale),
        width_(kSampleWidth * scale),
        height_(kSampleHeight * scale),
        pixels_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_)) {}

  int scale() const { return scale_; }
  int width() const { return width_; }
  int height() const { return height_; }
  Rgb& at(int x, int y) {
    return pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                   static_cast<std::size_t>(x)];
  }
  const std::vector<Rgb>& pixels() const { return pixels_; }
  std::vector<Rgb>& pixels() { return pixels_; }

  void fill(Box points, Rgb color) {
    const Box box{points.x * scale_, points.y * scale_, points.width * scale_, points.height * scale_};
    for (int y = std::max(0, box.y); y < std::min(height_, box.y + box.height); ++y) {
      for (int x = std::max(0, box.x); x < std::min(width_, box.x + box.width); ++x) at(x, y) = color;
    }
  }

 private:
  int scale_;
  int width_;
  int height_;
  std::vector<Rgb> pixels_;
};

int mixed(int from, int to, int part, int parts) {
  return from + (to - from) * part / parts;
}

Rgb mixed(Rgb from, Rgb to, int part, int parts) {
  return {mixed(from.red, to.red, part, parts), mixed(from.green, to.green, part, parts),
          mixed(from.blue, to.blue, part, parts)};
}

// A smooth gradient from corner to corner, in which missing colours show as bands.
void drawBackground(Canvas& canvas) {
  constexpr Rgb kTopLeft{28, 58, 104};
  constexpr Rgb kBottomRight{122, 186, 196};
  const int most = canvas.width() + 2 * canvas.height();
  for (int y = 0; y < canvas.height(); ++y) {
    for (int x = 0; x < canvas.width(); ++x) canvas.at(x, y) = mixed(kTopLeft, kBottomRight, x + 2 * y, most);
  }
}

// Darkest at the window and fading outwards, a little further down than up.
void drawShadow(Canvas& canvas, Box window, int shadow) {
  const int scale = canvas.scale();
  const int reach = shadow * scale / kShadowShare;
  if (reach == 0) return;
  const int drop = reach / 4;
  const int left = window.x * scale;
  const int top = window.y * scale + drop;
  const int right = left + window.width * scale;
  const int bottom = top + window.height * scale;
  for (int y = std::max(0, top - reach); y < std::min(canvas.height(), bottom + reach); ++y) {
    const int dy = std::max({top - y, y - bottom + 1, 0});
    for (int x = std::max(0, left - reach); x < std::min(canvas.width(), right + reach); ++x) {
      const int dx = std::max({left - x, x - right + 1, 0});
      const int squared = dx * dx + dy * dy;
      if (squared >= reach * reach) continue;
      const int rest = reach - static_cast<int>(std::sqrt(static_cast<float>(squared)));
      canvas.at(x, y) = mixed(canvas.at(x, y), {0, 0, 0}, kDarkest * rest / reach * rest / reach, kParts);
    }
  }
}

// Words of thin upright strokes between a line above and one below, as letters are. `seed` chooses the words.
void drawLine(Canvas& canvas, int left, int right, int top, uint32_t seed) {
  uint32_t state = seed;
  const auto next = [&state](uint32_t most) {
    state = state * 1664525U + 1013904223U;
    return static_cast<int>((state >> 16U) % most);
  };
  for (int x = left; x < right;) {
    const int letters = 3 + next(6);
    for (int i = 0; i < letters && x + 2 < right; ++i, x += 3) {
      const bool isTall = next(4) == 0;
      canvas.fill({x, top + (isTall ? 0 : 2), 1, isTall ? 6 : 4}, kInk);
      if (next(2) == 0) canvas.fill({x, top + 2, 2, 1}, kInk);
      if (next(2) == 0) canvas.fill({x, top + 5, 2, 1}, kInk);
    }
    x += 3;
  }
}

void drawWindow(Canvas& canvas, Box window, int shadow) {
  constexpr int kTitleHeight = 11;
  constexpr std::array kButtons{Rgb{222, 88, 80}, Rgb{226, 178, 66}, Rgb{88, 174, 92}};
  drawShadow(canvas, window, shadow);
  canvas.fill(window, kPaper);
  canvas.fill({window.x, window.y, window.width, kTitleHeight}, kTitle);
  int x = window.x + 4;
  for (const Rgb& color : kButtons) {
    canvas.fill({x, window.y + 4, 4, 4}, color);
    x += 7;
  }
  drawLine(canvas, window.x + 48, window.x + window.width - 44, window.y + 2, 5);
}

// A picture in a document: a sky with a sun over hills.
void drawPhoto(Canvas& canvas, Box frame) {
  const int scale = canvas.scale();
  const Box box{frame.x * scale, frame.y * scale, frame.width * scale, frame.height * scale};
  const int radius = box.height / 6;
  for (int y = 0; y < box.height; ++y) {
    for (int x = 0; x < box.width; ++x) {
      const int dx = x - box.width * 3 / 4;
      const int dy = y - box.height / 3;
      const int slope = std::abs(x - box.width / 3) * 2 / 3;
      Rgb color = mixed({238, 150, 92}, {250, 222, 170}, y, box.height);
      if (dx * dx + dy * dy < radius * radius) color = {255, 246, 214};
      if (y > box.height / 3 + slope) color = mixed({74, 120, 84}, {36, 70, 66}, y, box.height);
      canvas.at(box.x + x, box.y + y) = color;
    }
  }
}

void drawScreen(Canvas& canvas, int shadow) {
  drawBackground(canvas);
  drawWindow(canvas, kBack, shadow);
  for (int i = 0; i < 9; ++i) {
    const int right = kBack.x + (i % 4 == 3 ? 70 : 116);
    drawLine(canvas, kBack.x + 7, right, kBack.y + 17 + 9 * i, 31U + static_cast<uint32_t>(i));
  }
  drawWindow(canvas, kFront, shadow);
  drawPhoto(canvas, {kFront.x + 7, kFront.y + 18, 64, 46});
  for (int i = 0; i < 5; ++i) {
    drawLine(canvas, kFront.x + 78, kFront.x + 146, kFront.y + 18 + 9 * i, 71U + static_cast<uint32_t>(i));
  }
  canvas.fill({kFront.x + 108, kFront.y + 76, 38, 13}, kAccent);
  canvas.fill({kFront.x + 116, kFront.y + 82, 22, 2}, kPaper);
}

// What a block loses of the differences between pixels, and between groups of 2 and of 4 pixels: those that
// are no larger than `dropped` are gone, and of the others so many quarters are left.
struct Loss {
  std::array<int, 3> dropped;
  std::array<int, 3> quarters;
};
constexpr Loss kLosses[] = {{{24, 12, 6}, {1, 2, 4}}, {{6, 3, 0}, {3, 4, 4}}, {{0, 0, 0}, {4, 4, 4}}};

using Row = std::array<int, kBlock>;
constexpr int kFraction = 4;  // values in a block are so many times as large, against rounding

// Averages and differences of neighbours, again over the averages. A difference that is dropped makes its two
// halves equal.
void simplify(Row& row, const Loss& loss) {
  Row averages = row;
  std::array<Row, 3> differences{};
  std::size_t count = kBlock;
  for (std::size_t level = 0; level < differences.size(); ++level) {
    count /= 2;
    for (std::size_t i = 0; i < count; ++i) {
      const int left = averages[2 * i];
      const int right = averages[2 * i + 1];
      const int half = (left - right) / 2;
      const bool isDropped = std::abs(half) <= loss.dropped[level] * kFraction / 2;
      differences[level][i] = isDropped ? 0 : half * loss.quarters[level] / 4;
      averages[i] = (left + right) / 2;
    }
  }
  for (std::size_t level = differences.size(); level-- > 0; count *= 2) {
    Row halves{};
    for (std::size_t i = 0; i < count; ++i) {
      halves[2 * i] = averages[i] + differences[level][i];
      halves[2 * i + 1] = averages[i] - differences[level][i];
    }
    averages = halves;
  }
  row = averages;
}

// One channel of one block: its rows, then its columns.
template <int Rgb::*channel>
void simplifyBlock(Canvas& canvas, int left, int top, const Loss& loss) {
  const int scale = canvas.scale();
  std::array<Row, kBlock> block{};
  for (int y = 0; y < kBlock; ++y) {
    for (int x = 0; x < kBlock; ++x) {
      block[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] =
          canvas.at(left + x * scale, top + y * scale).*channel * kFraction;
    }
    simplify(block[static_cast<std::size_t>(y)], loss);
  }
  for (std::size_t x = 0; x < kBlock; ++x) {
    Row column{};
    for (std::size_t y = 0; y < kBlock; ++y) column[y] = block[y][x];
    simplify(column, loss);
    for (std::size_t y = 0; y < kBlock; ++y) block[y][x] = column[y];
  }
  for (int y = 0; y < kBlock * scale; ++y) {
    for (int x = 0; x < kBlock * scale; ++x) {
      const int value = block[static_cast<std::size_t>(y / scale)][static_cast<std::size_t>(x / scale)];
      canvas.at(left + x, top + y).*channel = std::clamp((value + kFraction / 2) / kFraction, 0, 255);
    }
  }
}

void loseDetail(Canvas& canvas, int quality) {
  const Loss& loss = kLosses[quality];
  if (loss.dropped[0] == 0) return;  // nothing is lost
  const int side = kBlock * canvas.scale();
  for (int y = 0; y + side <= canvas.height(); y += side) {
    for (int x = 0; x + side <= canvas.width(); x += side) {
      simplifyBlock<&Rgb::red>(canvas, x, y, loss);
      simplifyBlock<&Rgb::green>(canvas, x, y, loss);
      simplifyBlock<&Rgb::blue>(canvas, x, y, loss);
    }
  }
}

// Rounds each value to the nearest one that so many bits can hold; black and white stay as they are.
std::array<uint8_t, 256> levelsOf(int depth) {
  const int most = (1 << depth) - 1;
  std::array<uint8_t, 256> levels{};
  for (int value = 0; value < 256; ++value) {
    const int level = (value * most + 127) / 255;
    levels[static_cast<std::size_t>(value)] = static_cast<uint8_t>((level * 255 + most / 2) / most);
  }
  return levels;
}

SamplePicture withColors(const Canvas& canvas, int depth) {
  const auto levels = levelsOf(depth);
  SamplePicture picture{canvas.width(), canvas.height(), {}};
  picture.bytes.resize(canvas.pixels().size() * 4);
  uint8_t* byte = picture.bytes.data();
  for (const Rgb& pixel : canvas.pixels()) {
    *byte++ = levels[static_cast<std::size_t>(pixel.red)];
    *byte++ = levels[static_cast<std::size_t>(pixel.green)];
    *byte++ = levels[static_cast<std::size_t>(pixel.blue)];
    *byte++ = 255;
  }
  return picture;
}

}  // namespace

SamplePicture drawSampleScreen(const SampleSettings& settings, int scale) {
  Canvas canvas(std::clamp(scale, 1, 4));
  drawScreen(canvas, std::clamp(settings.shadow, 0, 72));
  loseDetail(canvas, std::clamp(settings.quality, 0, 2));
  return withColors(canvas, std::clamp(settings.depth, 4, 8));
}

}  // namespace norvik
