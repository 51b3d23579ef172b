// An arrow that turns back, drawn in the colour of the text.
#include "src/frontends/desktop/way_back_button.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleOptionToolButton>
#include <QStylePainter>
#include <algorithm>

#include "src/frontends/desktop/binding.h"
#include "src/frontends/shared/edits/take_back_texts.h"

namespace norvik::desktop {

namespace {

// The arrow in a square from 0 to 16.
constexpr double kArrowSquare = 16;
constexpr double kArrowStroke = 1.7;
constexpr double kArrowShare = 0.8;  // of the button's side
constexpr int kLeastSide = 24;       // for fingers and unsteady hands

QPainterPath turningArrow() {
  QPainterPath path;
  path.moveTo(6.5, 3);
  path.lineTo(3, 6.5);
  path.lineTo(6.5, 10);
  path.moveTo(3, 6.5);
  path.lineTo(9.5, 6.5);
  path.arcTo(QRectF(6.2, 6.5, 6.6, 6.6), 90, -180);
  path.lineTo(6.5, 13.1);
  return path;
}

}  // namespace

WayBackButton::WayBackButton(const QString& name, QWidget* parent) : QToolButton(parent) {
  setObjectName(name);
  setAutoRaise(true);
  setFocusPolicy(Qt::TabFocus);  // a click leaves the keyboard focus in the row
  setAccessibleDescription(desktop::text(translated(take_back_texts::kButtonHelp)));
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setPlaceKept(true);
  hide();
}

void WayBackButton::offer(const QString& name) {
  if (!name.isEmpty() && name != accessibleName()) {
    setAccessibleName(name);
    setToolTip(name);
  }
  setVisible(!name.isEmpty());
}

void WayBackButton::setPlaceKept(bool isKept) {
  QSizePolicy policy = sizePolicy();
  policy.setRetainSizeWhenHidden(isKept);
  if (policy != sizePolicy()) setSizePolicy(policy);
}

QSize WayBackButton::sizeHint() const {
  const int side = std::max(kLeastSide, fontMetrics().height());
  return {side, side};
}

void WayBackButton::paintEvent(QPaintEvent* /*event*/) {
  QStylePainter painter(this);
  QStyleOptionToolButton option;
  initStyleOption(&option);
  painter.drawComplexControl(QStyle::CC_ToolButton, option);
  const double side = std::min(width(), height()) * kArrowShare;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(QRectF(rect()).center() - QPointF(side, side) / 2);
  painter.scale(side / kArrowSquare, side / kArrowSquare);
  painter.strokePath(turningArrow(), QPen(palette().color(QPalette::WindowText), kArrowStroke, Qt::SolidLine,
                                          Qt::RoundCap, Qt::RoundJoin));
}

}  // namespace norvik::desktop
