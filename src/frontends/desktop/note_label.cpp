// At least one line high; long words may break.
#include "src/frontends/desktop/note_label.h"

#include <algorithm>

namespace norvik::desktop {

namespace {

constexpr qsizetype kLongWord = 20;
constexpr QChar kBreakHere(0x200b);  // a space of no width

// A word longer than the page is wide would be cut off, or make the page wider than the window.
QString breakable(const QString& words) {
  QString broken;
  qsizetype run = 0;
  for (const QChar letter : words) {
    run = letter.isSpace() ? 0 : run + 1;
    if (run > kLongWord && !letter.isLowSurrogate()) broken += kBreakHere;
    broken += letter;
  }
  return broken;
}

}  // namespace

NoteLabel::NoteLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
}

void NoteLabel::setWords(const QString& words) {
  if (words_ == words) return;
  words_ = words;
  setText(breakable(words));
}

QSize NoteLabel::sizeHint() const {
  return QLabel::sizeHint().expandedTo({0, fontMetrics().height()});
}

QSize NoteLabel::minimumSizeHint() const {
  return QLabel::minimumSizeHint().expandedTo({0, fontMetrics().height()});
}

int NoteLabel::heightForWidth(int width) const {
  return std::max(QLabel::heightForWidth(width), fontMetrics().height());
}

}  // namespace norvik::desktop
