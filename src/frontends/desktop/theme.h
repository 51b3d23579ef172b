// The light and the dark theme.
#pragma once

class QApplication;
class QPalette;

namespace norvik::desktop {

// The desktop's own style and colours; outlines that are too faint are strengthened where the style is
// Fusion.
void useDesktopTheme(QApplication& application);

// Dark colours in a style that takes them, whatever the desktop uses.
void useDarkTheme(QApplication& application);

// The light theme's palette for shading a button in: shading is described as what is missing to white, so on
// dark windows the plain button is drawn in light colours before it is tinted. A light palette is returned
// unchanged.
QPalette shadingPalette(const QPalette& palette);

}  // namespace norvik::desktop
