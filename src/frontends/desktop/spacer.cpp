// Sizes of empty space.
#include "src/frontends/desktop/spacer.h"

#include <QStyle>
#include <cmath>

namespace norvik::desktop {

LineSpacer::LineSpacer(double lines, QWidget* parent) : QWidget(parent), lines_(lines) {
  setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
}

QSize LineSpacer::sizeHint() const {
  return {0, static_cast<int>(std::lround(fontMetrics().height() * lines_))};
}

ColumnSpacer::ColumnSpacer(double lines, QWidget* parent) : QWidget(parent), lines_(lines) {
  setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Minimum);
}

QSize ColumnSpacer::sizeHint() const {
  return {static_cast<int>(std::lround(fontMetrics().height() * lines_)), 0};
}

BoxSpacer::BoxSpacer(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Minimum);
}

QSize BoxSpacer::sizeHint() const {
  return {style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this) +
              style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, this),
          0};
}

}  // namespace norvik::desktop
