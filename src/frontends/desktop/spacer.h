// Empty room in a layout, measured in the font and the style and so never in pixels.
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

// As wide as the mark of a check box with the room behind it, so that what stands under a box begins where
// its words do.
class BoxSpacer : public QWidget {
 public:
  explicit BoxSpacer(QWidget* parent);
  QSize sizeHint() const override;
};

}  // namespace norvik::desktop
