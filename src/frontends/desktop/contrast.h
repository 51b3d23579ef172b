// Contrast of colours as WCAG 2 defines it.
#pragma once

#include <QColor>

namespace norvik::desktop {

// The least contrasts of level AA: of text, and of what marks a control or its state.
inline constexpr double kTextContrast = 4.5;
inline constexpr double kGraphicContrast = 3;

// From 1, the same luminance, to 21, black on white. Both colours opaque.
double contrastRatio(const QColor& one, const QColor& other);

// A colour between the background and `strong`, about as far from the background as `share` (0 to 1), and
// farther where the contrast needs it; `strong` itself where even that does not reach it.
QColor withContrast(const QColor& background, const QColor& strong, double share, double contrast);

}  // namespace norvik::desktop
