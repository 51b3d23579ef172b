// Chooses the letters: beginnings of words first.
#include "src/frontends/desktop/mnemonics.h"

#include <QAbstractButton>
#include <QLabel>
#include <QWidget>

namespace norvik::desktop {

namespace {

constexpr QLatin1Char kMark('&');

// A text with marks in it as it is shown.
QString shown(const QString& marked) {
  QString plain;
  for (qsizetype i = 0; i < marked.size(); ++i) {
    if (marked[i] == kMark) ++i;
    if (i < marked.size()) plain += marked[i];
  }
  return plain;
}

// Whether a keyboard has a key for it; other letters take several to write.
bool hasKey(QChar letter) {
  switch (letter.script()) {
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
      return false;
    default:
      return letter.isLetter();
  }
}

QString withMnemonic(const QString& words, QSet<QChar>& taken) {
  for (const bool beginningsOnly : {true, false}) {
    for (qsizetype i = 0; i < words.size(); ++i) {
      const QChar letter = words[i].toLower();
      const bool begins = i == 0 || words[i - 1].isSpace();
      if (!hasKey(letter) || (beginningsOnly && !begins) || taken.contains(letter)) continue;
      taken.insert(letter);
      return withoutMnemonic(words.left(i)) + kMark + withoutMnemonic(words.mid(i));
    }
  }
  return withoutMnemonic(words);
}

}  // namespace

QString withoutMnemonic(const QString& words) {
  QString marked = words;
  return marked.replace(kMark, QStringLiteral("&&"));
}

void addMnemonics(QWidget& widget, QSet<QChar>& taken) {
  for (QWidget* child : widget.findChildren<QWidget*>()) {
    if (auto* button = qobject_cast<QAbstractButton*>(child);
        button != nullptr && !button->text().isEmpty()) {
      button->setText(withMnemonic(shown(button->text()), taken));
    } else if (auto* label = qobject_cast<QLabel*>(child); label != nullptr && label->buddy() != nullptr) {
      label->setText(withMnemonic(shown(label->text()), taken));
    }
  }
}

}  // namespace norvik::desktop
