// The palettes.
#include "src/frontends/desktop/theme.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>

#include "src/frontends/desktop/contrast_style.h"

namespace norvik::desktop {

void useDesktopTheme(QApplication& /*application*/) {
  if (QApplication::style()->name() == QLatin1String("fusion")) QApplication::setStyle(new ContrastStyle);
}

void useDarkTheme(QApplication& /*application*/) {
  QApplication::setStyle(new ContrastStyle);
  QPalette dark(QColor(0x4a, 0x4e, 0x54), QColor(0x36, 0x39, 0x3e));
  const QColor words(0xe6, 0xe7, 0xe9);
  const QColor greyed(0x86, 0x89, 0x8d);
  for (const auto role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
    dark.setColor(role, words);
    dark.setColor(QPalette::Disabled, role, greyed);
  }
  dark.setColor(QPalette::Highlight, QColor(0x2f, 0x74, 0xc0));
  dark.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0x5a, 0x5e, 0x64));
  dark.setColor(QPalette::Base, QColor(0x1d, 0x1f, 0x21));
  dark.setColor(QPalette::AlternateBase, QColor(0x2b, 0x2d, 0x30));
  dark.setColor(QPalette::ToolTipBase, QColor(0x3a, 0x3d, 0x41));
  dark.setColor(QPalette::PlaceholderText, QColor(0xa6, 0xa9, 0xad));
  dark.setColor(QPalette::Disabled, QPalette::PlaceholderText, greyed);
  dark.setColor(QPalette::HighlightedText, Qt::white);
  dark.setColor(QPalette::Link, QColor(0x6b, 0xb0, 0xf5));
  QApplication::setPalette(dark);
}

QPalette shadingPalette(const QPalette& palette) {
  if (palette.color(QPalette::Window).lightness() >= 128) return palette;
  return QPalette(QColor(0xf4, 0xf4, 0xf4), QColor(0xff, 0xff, 0xff));
}

}  // namespace norvik::desktop
