// The drawing's shapes as painter paths.
#include "src/frontends/desktop/line_icon.h"

#include <QPainterPath>

namespace norvik::desktop {

namespace {

QPointF pointAt(const LinePoint& point) {
  return {point.x, point.y};
}

QPainterPath pathOf(const LineShape& shape) {
  QPainterPath path;
  for (const Segment& segment : shape.segments) {
    switch (segment.stroke) {
      case Stroke::move:
        path.moveTo(pointAt(segment.points[0]));
        break;
      case Stroke::line:
        path.lineTo(pointAt(segment.points[0]));
        break;
      case Stroke::curve:
        path.cubicTo(pointAt(segment.points[0]), pointAt(segment.points[1]), pointAt(segment.points[2]));
        break;
      case Stroke::close:
        path.closeSubpath();
        break;
    }
  }
  return path;
}

}  // namespace

void drawLineIcon(QPainter& painter, const QRectF& square, const LineDrawing& drawing, const QColor& color) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(square.topLeft());
  painter.scale(square.width() / drawing.side, square.height() / drawing.side);
  const QPen pen(color, drawing.width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
  for (const LineShape& shape : drawing.shapes) {
    painter.setPen(shape.isOutlined ? pen : QPen(Qt::NoPen));
    painter.setBrush(shape.isFilled ? QBrush(color) : QBrush());
    painter.drawPath(pathOf(shape));
  }
  painter.restore();
}

}  // namespace norvik::desktop
