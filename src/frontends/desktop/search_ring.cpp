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

SearchRing::SearchRing(QWidget* widget, QWidget* page) : QWidget(page), widget_(widget) {
  setObjectName(QStringLiteral("searchRing"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  widget->installEventFilter(this);
  page->installEventFilter(this);  // its rows move with it
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
  if (widget_ == nullptr) return;
  const QRect place(widget_->mapTo(parentWidget(), QPoint()), widget_->size());
  setGeometry(place.adjusted(-kReach, -kReach, kReach, kReach));
}

bool SearchRing::eventFilter(QObject* watched, QEvent* event) {
  const bool isLaidOut = event->type() == QEvent::Move || event->type() == QEvent::Resize ||
                         event->type() == QEvent::LayoutRequest;
  if (isLaidOut) follow();
  if (event->type() == QEvent::Hide && watched == widget_) deleteLater();
  return QWidget::eventFilter(watched, event);
}

void SearchRing::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(palette().color(QPalette::Highlight), kWidth));
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kRadius, kRadius);
}

}  // namespace norvik::desktop
