// The scroll area of a page, which stays in the middle of it where the window is wider. Its minimum size
// shows the page's whole width and some lines of it, if the screen is large enough.
#pragma once

#include <QScrollArea>

namespace norvik::desktop {

class Page;

class PageArea : public QScrollArea {
 public:
  // Owns the page. `name` is the accessible name of the area and its scroll bars.
  PageArea(Page* page, const QString& name);

  QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;

 private:
  void limitWidth();

  Page* page_;
};

}  // namespace norvik::desktop
