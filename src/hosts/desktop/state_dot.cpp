// The dot's three colours, legible on light and on dark windows.
#include "state_dot.h"

#include <QPainter>

namespace norvik::desktop {

namespace {
const QColor kRunning(0x34, 0xa8, 0x53);
const QColor kChanging(0xe8, 0xa3, 0x17);
const QColor kStopped(0x8a, 0x8d, 0x91);
}  // namespace

StateDot::StateDot(const NVKServerPrefs& pane, QWidget* parent) : QWidget(parent), pane_(pane) {
  setObjectName(QStringLiteral("stateDot"));
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  showModel();
}

// The pid is 0 from the moment that a start or stop begins until the next refresh.
void StateDot::showModel() {
  const int pid = pane_.m_serverPid;
  const QColor color = pid == -1 ? kStopped : pid == 0 ? kChanging : kRunning;
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
