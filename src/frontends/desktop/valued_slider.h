// A slider and the labels that show its value, in numbers and in words, which its page places beside it.
#pragma once

#include <QSlider>
#include <cstdint>

#include "src/server/mac/ui/interface_description.h"

class QLabel;

namespace norvik::desktop {

class ValuedSlider : public QSlider {
 public:
  // `description` outlives the slider.
  ValuedSlider(const ControlDescription& description, QWidget* parent);

  // Greyed with the slider; wide enough for every value of the range. The words are empty for a slider that
  // has none.
  QLabel* valueLabel() const { return value_; }
  QLabel* wordsLabel() const { return words_; }
  // The model may hold a value outside the slider's range.
  void showValue(int64_t value);

 protected:
  void changeEvent(QEvent* event) override;
  void sliderChange(SliderChange change) override;

 private:
  void fitLabel();

  const ControlDescription& description_;
  QLabel* value_;
  QLabel* words_;
};

}  // namespace norvik::desktop
