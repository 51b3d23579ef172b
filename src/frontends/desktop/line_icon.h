// Draws an icon of lines in a colour.
#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>

#include "src/frontends/shared/icons/line_drawing.h"

namespace norvik::desktop {

// Fills the square.
void drawLineIcon(QPainter& painter, const QRectF& square, const LineDrawing& drawing, const QColor& color);

}  // namespace norvik::desktop
