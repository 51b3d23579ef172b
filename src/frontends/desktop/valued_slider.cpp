// The labels follow the slider.
#include "src/frontends/desktop/valued_slider.h"

#include <QEvent>
#include <QLabel>
#include <algorithm>

#include "src/frontends/desktop/binding.h"
#include "src/frontends/desktop/secondary_label.h"
#include "src/frontends/shared/interface/value_words.h"

namespace norvik::desktop {

namespace {

void showWords(QLabel& label, const QString& words) {
  if (label.text() != words) label.setText(words);
}

int widthOf(const QFontMetrics& metrics, const std::string& words) {
  return metrics.size(Qt::TextSingleLine, text(words)).width() + 1;
}

// As wide as the widest words of the range need; where there is no room they are broken into lines.
class WordsLabel : public SecondaryLabel {
 public:
  WordsLabel(const ControlDescription& slider, QWidget* parent)
      : SecondaryLabel(QString(), parent), slider_(slider) {
    setWordWrap(true);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
  }
  QSize sizeHint() const override { return {widest(QString()), fontMetrics().height()}; }
  QSize minimumSizeHint() const override { return {widest(QStringLiteral(" ")), fontMetrics().height()}; }

 private:
  // Of all words, or of what a separator leaves of them.
  int widest(const QString& separator) const {
    int width = 0;
    for (const ValueWords& entry : slider_.valueWords) {
      const QString words = desktop::text(valueWords(slider_, static_cast<int64_t>(entry.from)));
      for (const QString& part : separator.isEmpty() ? QStringList(words) : words.split(separator))
        width = std::max(width, widthOf(fontMetrics(), part.toStdString()));
    }
    return width;
  }

  const ControlDescription& slider_;
};

}  // namespace

ValuedSlider::ValuedSlider(const ControlDescription& description, QWidget* parent)
    : QSlider(Qt::Horizontal, parent),
      description_(description),
      value_(new QLabel(parent)),
      words_(new WordsLabel(description, parent)) {
  setFocusPolicy(Qt::StrongFocus);
}

void ValuedSlider::showValue(int64_t value) {
  showWords(*value_, text(valueText(description_, value)));
  showWords(*words_, text(valueWords(description_, value)));
}

void ValuedSlider::changeEvent(QEvent* event) {
  QSlider::changeEvent(event);
  if (event->type() == QEvent::EnabledChange) {
    value_->setEnabled(isEnabled());
    words_->setEnabled(isEnabled());
  }
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) fitLabel();
}

void ValuedSlider::sliderChange(SliderChange change) {
  QSlider::sliderChange(change);
  if (change == SliderRangeChange) fitLabel();
}

// The sliders of a page stay equally long, whatever their values.
void ValuedSlider::fitLabel() {
  value_->setMinimumWidth(std::max(widthOf(fontMetrics(), valueText(description_, minimum())),
                                   widthOf(fontMetrics(), valueText(description_, maximum()))));
}

}  // namespace norvik::desktop
