// Empty space in a layout, measured by the font and the style, never in pixels.
#pragma once

#include <QWidget>

namespace norvik::desktop {

// As high as that many lines of text.
class LineSpacer : public QWidget {
 public:
  LineSpacer(double lines, QWidget* parent);
  QSize sizeHint() const override;

 private:
  double lines_;
};

// As wide as that many lines of text are high, or less where there is no room.
class ColumnSpacer : public QWidget {
 public:
  ColumnSpacer(double lines, QWidget* parent);
  QSize sizeHint() const override;

 private:
  double lines_;
};

// As wide as the mark of a check box and the space after it, so that what is under a check box is aligned
// with its words.
class BoxSpacer : public QWidget {
 public:
  explicit BoxSpacer(QWidget* parent);
  QSize sizeHint() const override;
};

}  // namespace norvik::desktop
