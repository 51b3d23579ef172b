// A message under a field that says what is wrong with it, with an icon and in the colour of its kind. Keeps
// the height of a line while it is empty, so that the page does not jump at each key.
#pragma once

#include <QLabel>

#include "src/frontends/shared/interface/window_texts.h"

namespace norvik::desktop {

class NoteLabel : public QLabel {
 public:
  explicit NoteLabel(QWidget* parent);

  // The words as they were set; the label's own text has breaks within long words.
  QString words() const { return words_; }
  void setWords(const QString& words);
  // The words with the icon and the colour of the kind; without the icon where there are none.
  void setNote(const QString& words, MessageKind kind);
  MessageKind kind() const { return kind_; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  int heightForWidth(int width) const override;

 protected:
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void chooseColor();
  int iconSide() const { return fontMetrics().ascent(); }

  QString words_;
  bool hasIcon_ = false;
  MessageKind kind_ = MessageKind::failure;
};

}  // namespace norvik::desktop
