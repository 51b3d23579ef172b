// A slider and the label that shows its value, which its page places beside it.
#pragma once

#include <QSlider>
#include <cstdint>

class QLabel;

namespace norvik::desktop {

class ValuedSlider : public QSlider {
 public:
  explicit ValuedSlider(QWidget* parent);

  // Greyed with the slider; wide enough for every value of the range.
  QLabel* valueLabel() const { return value_; }
  // The value in words; the model may hold one outside the slider's range.
  void showValue(int64_t value);

 protected:
  void changeEvent(QEvent* event) override;
  void sliderChange(SliderChange change) override;

 private:
  void fitLabel();
  QLabel* value_;
};

}  // namespace norvik::desktop
