// The colour follows the application's palette.
#include "src/frontends/desktop/secondary_label.h"

#include <QApplication>
#include <QEvent>

#include "src/frontends/desktop/contrast.h"

namespace norvik::desktop {

namespace {
constexpr double kTextShare = 0.6;  // of the way from the window's colour to that of its text
}  // namespace

SecondaryLabel::SecondaryLabel(const QString& words, QWidget* parent) : QLabel(words, parent) {
  setTextFormat(Qt::PlainText);
  chooseColor();
}

void SecondaryLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) chooseColor();
}

// A disabled label keeps the style's colour for disabled text.
void SecondaryLabel::chooseColor() {
  QPalette changed = palette();
  const QPalette general = QApplication::palette(this);
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    const QColor color = withContrast(general.color(group, QPalette::Window),
                                      general.color(group, QPalette::WindowText), kTextShare, kTextContrast);
    changed.setColor(group, QPalette::WindowText, color);
  }
  changed.setColor(QPalette::Disabled, QPalette::WindowText,
                   general.color(QPalette::Disabled, QPalette::WindowText));
  if (changed != palette()) setPalette(changed);
}

}  // namespace norvik::desktop
