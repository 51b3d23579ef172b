// A message under a field that says what is wrong with it. Keeps the height of a line while it is empty, so
// that the page does not jump at each key.
#pragma once

#include <QLabel>

namespace norvik::desktop {

class NoteLabel : public QLabel {
 public:
  explicit NoteLabel(QWidget* parent);

  // The words as they were set; the label's own text has breaks within long words.
  QString words() const { return words_; }
  void setWords(const QString& words);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  int heightForWidth(int width) const override;

 private:
  QString words_;
};

}  // namespace norvik::desktop
