// Lies over the page and lets every event through.
#include "src/frontends/desktop/search_ring.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>

namespace norvik::desktop {

namespace {
constexpr int kGap = 3;
constexpr double kWidth = 2;
constexpr double kRadius = 5;
}  // namespace

SearchRing::SearchRing(QWidget* widget) : QWidget(widget->parentWidget()), widget_(widget) {
  setObjectName(QStringLiteral("searchRing"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  widget->installEventFilter(this);
  connect(widget, &QObject::destroyed, this, &QObject::deleteLater);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget* /*old*/, QWidget* now) {
    const bool stays = now == nullptr || now == widget_ || (widget_ != nullptr && widget_->isAncestorOf(now));
    if (!stays) deleteLater();
  });
  follow();
  show();
  raise();
}

void SearchRing::follow() {
  constexpr int kReach = kGap + static_cast<int>(kWidth);
  if (widget_ != nullptr) setGeometry(widget_->geometry().adjusted(-kReach, -kReach, kReach, kReach));
}

bool SearchRing::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Move || event->type() == QEvent::Resize) follow();
  if (event->type() == QEvent::Hide) deleteLater();
  return QWidget::eventFilter(watched, event);
}

void SearchRing::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(palette().color(QPalette::Highlight), kWidth));
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kRadius, kRadius);
}

}  // namespace norvik::desktop
