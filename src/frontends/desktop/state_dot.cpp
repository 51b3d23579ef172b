// The dot, drawn in the colour of the state.
#include "src/frontends/desktop/state_dot.h"

#include <QPainter>

#include "src/frontends/shared/interface/server_state.h"

namespace norvik::desktop {

StateDot::StateDot(const NVKServerPrefs& pane, QWidget* parent) : QWidget(parent), pane_(pane) {
  setObjectName(QStringLiteral("stateDot"));
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  showModel();
}

void StateDot::showModel() {
  const Color now = stateColor(pane_);
  const QColor color = QColor::fromRgbF(float(now.red), float(now.green), float(now.blue), float(now.alpha));
  if (color == color_) return;
  color_ = color;
  update();
}

QSize StateDot::sizeHint() const {
  const int side = fontMetrics().ascent() * 4 / 5;
  return {side, side};
}

void StateDot::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(color_);
  painter.drawEllipse(rect());
}

}  // namespace norvik::desktop
