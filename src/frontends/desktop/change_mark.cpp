// A bar in the accent colour, or nothing.
#include "src/frontends/desktop/change_mark.h"

#include <QPainter>

namespace norvik::desktop {

ChangeMark::ChangeMark(const QString& help, QWidget* parent) : QWidget(parent), help_(help) {
  setObjectName(QStringLiteral("changeMark"));
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
}

void ChangeMark::setOn(bool on) {
  if (on_ == on) return;
  on_ = on;
  setToolTip(on ? help_ : QString());
  setAccessibleName(on ? help_ : QString());
  update();
}

QSize ChangeMark::sizeHint() const {
  return {fontMetrics().averageCharWidth() / 2 + 1, fontMetrics().height()};
}

void ChangeMark::paintEvent(QPaintEvent* /*event*/) {
  if (!on_) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(palette().highlight());
  const qreal radius = width() / 2.0;
  painter.drawRoundedRect(rect(), radius, radius);
}

}  // namespace norvik::desktop
