// The small button at the end of a row that takes the row's pending change back. Its place is kept while
// there is nothing to take back, so that the row does not move when it appears.
#pragma once

#include <QToolButton>

namespace norvik::desktop {

class WayBackButton : public QToolButton {
 public:
  // `name` is the object name. Hidden at first.
  WayBackButton(const QString& name, QWidget* parent);

  // Shows the button under that accessible name, "Port number: back to 4073"; hides it where it is empty.
  void offer(const QString& name);
  // Whether its place is kept; not in a row that is hidden itself.
  void setPlaceKept(bool isKept);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace norvik::desktop
