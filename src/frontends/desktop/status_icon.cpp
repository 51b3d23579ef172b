// A disc, a triangle or an octagon, and a sign in it in the window's colour.
#include "src/frontends/desktop/status_icon.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <algorithm>

#include "src/frontends/desktop/contrast.h"

namespace norvik::desktop {

namespace {

struct Look {
  MessageKind kind;
  QRgb color;
};
constexpr Look kLooks[] = {
    {MessageKind::done, 0xff1a7f37},     {MessageKind::note, 0xff1f6fd0},
    {MessageKind::warning, 0xff9a6700},  {MessageKind::failure, 0xffc8202c},
    {MessageKind::progress, 0xff1f6fd0},
};

// Shapes in a square from 0 to 16.
constexpr double kSide = 16;
constexpr double kStroke = 1.8;

QPainterPath triangle() {
  QPainterPath path;
  path.addPolygon(QPolygonF{QPointF(8, 1), QPointF(15.4, 14.4), QPointF(0.6, 14.4)});
  path.closeSubpath();
  return path;
}

QPainterPath octagon() {
  QPainterPath path;
  path.addPolygon(QPolygonF{QPointF(5, 0.6), QPointF(11, 0.6), QPointF(15.4, 5), QPointF(15.4, 11),
                            QPointF(11, 15.4), QPointF(5, 15.4), QPointF(0.6, 11), QPointF(0.6, 5)});
  path.closeSubpath();
  return path;
}

QPainterPath outlineOf(MessageKind kind) {
  if (kind == MessageKind::warning) return triangle();
  if (kind == MessageKind::failure) return octagon();
  QPainterPath disc;
  disc.addEllipse(QRectF(0.6, 0.6, kSide - 1.2, kSide - 1.2));
  return disc;
}

// The sign as lines: a check mark, an i, an exclamation mark, a cross, three dots.
QPainterPath signOf(MessageKind kind) {
  QPainterPath sign;
  const auto line = [&sign](QPointF from, QPointF to) {
    sign.moveTo(from);
    sign.lineTo(to);
  };
  const auto dot = [&line](double x, double y) { line({x, y}, {x, y + 0.01}); };
  switch (kind) {
    case MessageKind::done:
      line({4.6, 8.4}, {7, 10.8});
      line({7, 10.8}, {11.4, 5.6});
      break;
    case MessageKind::note:
      dot(8, 4.6);
      line({8, 7.6}, {8, 11.6});
      break;
    case MessageKind::warning:
      line({8, 5.8}, {8, 9.4});
      dot(8, 12);
      break;
    case MessageKind::failure:
      line({5.4, 5.4}, {10.6, 10.6});
      line({10.6, 5.4}, {5.4, 10.6});
      break;
    case MessageKind::progress:
      for (const double x : {4.8, 8.0, 11.2}) dot(x, 8);
      break;
  }
  return sign;
}

}  // namespace

QColor statusColor(MessageKind kind, const QPalette& palette) {
  const auto* look = std::ranges::find(kLooks, kind, &Look::kind);
  return madeLegible(QColor::fromRgb(look->color), palette.color(QPalette::Window),
                     palette.color(QPalette::WindowText), kTextContrast);
}

void drawStatusIcon(QPainter& painter, const QRectF& square, MessageKind kind, const QPalette& palette) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(square.topLeft());
  painter.scale(square.width() / kSide, square.height() / kSide);
  painter.fillPath(outlineOf(kind), statusColor(kind, palette));
  painter.strokePath(signOf(kind), QPen(palette.color(QPalette::Window), kStroke, Qt::SolidLine, Qt::RoundCap,
                                        Qt::RoundJoin));
  painter.restore();
}

StatusIcon::StatusIcon(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void StatusIcon::setKind(MessageKind kind) {
  if (kind_ == kind) return;
  kind_ = kind;
  update();
}

QSize StatusIcon::sizeHint() const {
  return {fontMetrics().height(), fontMetrics().height()};
}

void StatusIcon::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  drawStatusIcon(painter, rect(), kind_, palette());
}

}  // namespace norvik::desktop
