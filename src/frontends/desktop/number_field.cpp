// The width, from that of digits.
#include "src/frontends/desktop/number_field.h"

namespace norvik::desktop {

namespace {
constexpr int kSpareDigits = 3;    // so that a digit too many is seen
constexpr int kToolkitWidth = 17;  // the letters x that a line edit of the toolkit is wide
}  // namespace

NumberField::NumberField(int digits, QWidget* parent) : QLineEdit(parent), digits_(digits) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize NumberField::sizeHint() const {
  const QSize whole = QLineEdit::sizeHint();
  const QFontMetrics metrics = fontMetrics();
  const int text = (digits_ + kSpareDigits) * metrics.horizontalAdvance(QLatin1Char('8'));
  return {whole.width() - kToolkitWidth * metrics.horizontalAdvance(QLatin1Char('x')) + text, whole.height()};
}

}  // namespace norvik::desktop
