// At least one line high; long words may break; the icon stands before the first line.
#include "src/frontends/desktop/note_label.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <algorithm>

#include "src/frontends/desktop/status_icon.h"

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

void NoteLabel::setNote(const QString& words, MessageKind kind) {
  const bool hasIcon = !words.isEmpty();
  if (hasIcon != hasIcon_ || kind != kind_) {
    hasIcon_ = hasIcon;
    kind_ = kind;
    const int space = hasIcon ? iconSide() * 3 / 2 : 0;
    layoutDirection() == Qt::RightToLeft ? setContentsMargins(0, 0, space, 0)
                                         : setContentsMargins(space, 0, 0, 0);
    chooseColor();
    update();
  }
  setWords(words);
}

void NoteLabel::chooseColor() {
  const QPalette general = QApplication::palette(this);
  QPalette changed = general;
  if (hasIcon_) changed.setColor(QPalette::WindowText, statusColor(kind_, general));
  if (changed != palette()) setPalette(changed);
}

void NoteLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && hasIcon_) chooseColor();
}

void NoteLabel::paintEvent(QPaintEvent* event) {
  QLabel::paintEvent(event);
  if (!hasIcon_) return;
  QPainter painter(this);
  const int top =
      std::max(0, (height() - heightForWidth(width())) / 2) + (fontMetrics().height() - iconSide()) / 2;
  const int left = layoutDirection() == Qt::RightToLeft ? width() - iconSide() : 0;
  drawStatusIcon(painter, QRectF(left, top, iconSide(), iconSide()), kind_, palette());
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
