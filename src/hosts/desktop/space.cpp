// Sizes of empty room.
#include "space.h"

#include <QStyle>
#include <cmath>

namespace norvik::desktop {

LineSpace::LineSpace(double lines, QWidget* parent) : QWidget(parent), lines_(lines) {
  setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
}

QSize LineSpace::sizeHint() const {
  return {0, static_cast<int>(std::lround(fontMetrics().height() * lines_))};
}

BoxSpace::BoxSpace(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Minimum);
}

QSize BoxSpace::sizeHint() const {
  return {style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this) +
              style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, this),
          0};
}

}  // namespace norvik::desktop
