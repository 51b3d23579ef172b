// Contrast of colours as WCAG 2 defines it.
#pragma once

#include <QColor>

namespace norvik::desktop {

// The least contrasts of level AA: of text, and of what marks a control or its state.
inline constexpr double kTextContrast = 4.5;
inline constexpr double kGraphicContrast = 3;

// Of the way from one colour to the other, `share` (0 to 1). Both opaque.
QColor mixedColor(const QColor& from, const QColor& to, double share);

// From 1, the same luminance, to 21, black on white. Both colours opaque.
double contrastRatio(const QColor& one, const QColor& other);

// The background mixed with `strong`, of which there is `share` (0 to 1), or more if the contrast requires
// it; `strong` itself if no mixture reaches the contrast.
QColor withContrast(const QColor& background, const QColor& strong, double share, double contrast);

// The colour itself, mixed with `strong` as far as the contrast to the background requires.
QColor madeLegible(const QColor& color, const QColor& background, const QColor& strong, double contrast);

}  // namespace norvik::desktop
