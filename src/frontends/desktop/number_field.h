// A field for a number: as wide as the largest one, and not as wide as a line of text.
#pragma once

#include <QLineEdit>

namespace norvik::desktop {

class NumberField : public QLineEdit {
 public:
  // `digits` of the largest number.
  NumberField(int digits, QWidget* parent);

  QSize sizeHint() const override;

 private:
  int digits_;
};

}  // namespace norvik::desktop
