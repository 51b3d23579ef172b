// Light and dark.
#pragma once

class QApplication;
class QPalette;

namespace norvik::desktop {

// Dark colours in a style that takes them, whatever the desktop uses.
void useDarkTheme(QApplication& application);

// The colours that a plain button is drawn in before it is tinted: its own where windows are light, light
// ones where they are dark, as shading is told as what is missing to white.
QPalette shadingPalette(const QPalette& palette);

}  // namespace norvik::desktop
