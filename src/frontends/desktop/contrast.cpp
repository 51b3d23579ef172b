// Relative luminance, and mixing colours until they differ enough.
#include "src/frontends/desktop/contrast.h"

#include <algorithm>
#include <cmath>

namespace norvik::desktop {

namespace {

constexpr double kStep = 0.02;

double linear(double channel) {
  return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

}  // namespace

QColor mixedColor(const QColor& from, const QColor& to, double share) {
  const auto channel = [share](int a, int b) { return static_cast<int>(std::lround(a + (b - a) * share)); };
  return {channel(from.red(), to.red()), channel(from.green(), to.green()), channel(from.blue(), to.blue())};
}

double contrastRatio(const QColor& one, const QColor& other) {
  const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
  return (lighter + 0.05) / (darker + 0.05);
}

QColor withContrast(const QColor& background, const QColor& strong, double share, double contrast) {
  for (double part = share; part < 1; part += kStep) {
    const QColor color = mixedColor(background, strong, part);
    if (contrastRatio(color, background) >= contrast) return color;
  }
  return strong;
}

QColor madeLegible(const QColor& color, const QColor& background, const QColor& strong, double contrast) {
  for (double part = 0; part < 1; part += kStep) {
    const QColor legible = mixedColor(color, strong, part);
    if (contrastRatio(legible, background) >= contrast) return legible;
  }
  return strong;
}

}  // namespace norvik::desktop
