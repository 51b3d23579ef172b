// The outlines, drawn over those of the style.
#include "src/frontends/desktop/contrast_style.h"

#include <QPainter>
#include <QStyleOption>

#include "src/frontends/desktop/contrast.h"

namespace norvik::desktop {

namespace {

constexpr double kShare = 0.5;  // of the way from the window's colour to that of its text

QColor outlineColor(const QStyleOption& option) {
  const QPalette& palette = option.palette;
  if (!option.state.testFlag(QStyle::State_Enabled))
    return palette.color(QPalette::Disabled, QPalette::WindowText);
  return withContrast(palette.color(QPalette::Window), palette.color(QPalette::WindowText), kShare,
                      kGraphicContrast);
}

}  // namespace

ContrastStyle::ContrastStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void ContrastStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                  const QWidget* widget) const {
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  if (element != PE_IndicatorCheckBox && element != PE_IndicatorRadioButton) return;
  const QRectF mark = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(outlineColor(*option));
  painter->setBrush(Qt::NoBrush);
  if (element == PE_IndicatorCheckBox)
    painter->drawRect(mark);
  else
    painter->drawEllipse(mark);
  painter->restore();
}

}  // namespace norvik::desktop
