// The scroll area of a page. Its least size shows the page's whole width and some lines of it, as far as the
// screen has the room.
#pragma once

#include <QScrollArea>

namespace norvik::desktop {

class PageArea : public QScrollArea {
 public:
  // Takes the page over; `name` is what a screen reader says for the area and its bars.
  PageArea(QWidget* page, const QString& name);

  QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
};

}  // namespace norvik::desktop
