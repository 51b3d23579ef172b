// The label follows the slider.
#include "src/frontends/desktop/valued_slider.h"

#include <QEvent>
#include <QLabel>
#include <algorithm>

namespace norvik::desktop {

ValuedSlider::ValuedSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent), value_(new QLabel(parent)) {
  setFocusPolicy(Qt::StrongFocus);
}

void ValuedSlider::showValue(int64_t value) {
  const QString words = QString::number(value);
  if (value_->text() != words) value_->setText(words);
}

void ValuedSlider::changeEvent(QEvent* event) {
  QSlider::changeEvent(event);
  if (event->type() == QEvent::EnabledChange) value_->setEnabled(isEnabled());
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) fitLabel();
}

void ValuedSlider::sliderChange(SliderChange change) {
  QSlider::sliderChange(change);
  if (change == SliderRangeChange) fitLabel();
}

// The sliders of a page stay equally long, whatever their values.
void ValuedSlider::fitLabel() {
  const QFontMetrics metrics = fontMetrics();
  value_->setMinimumWidth(std::max(metrics.horizontalAdvance(QString::number(minimum())),
                                   metrics.horizontalAdvance(QString::number(maximum()))));
}

}  // namespace norvik::desktop
