// What is wrong with a field, in words right under it. Keeps the room of a line while there is nothing to
// say, so that the page does not jump at each key.
#pragma once

#include <QLabel>

namespace norvik::desktop {

class NoteLabel : public QLabel {
 public:
  explicit NoteLabel(QWidget* parent);

  // The words as they were given; the label's own text may break within what a person typed without a space.
  QString words() const { return words_; }
  void setWords(const QString& words);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  int heightForWidth(int width) const override;

 private:
  QString words_;
};

}  // namespace norvik::desktop
