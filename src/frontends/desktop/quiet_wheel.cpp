// An event filter for wheel events.
#include "src/frontends/desktop/quiet_wheel.h"

#include <QEvent>
#include <QWidget>

namespace norvik::desktop {

QuietWheel::QuietWheel(QWidget* widget, When when) : QObject(widget), when_(when) {
  widget->installEventFilter(this);
}

void QuietWheel::quiet(QWidget* widget, When when) {
  new QuietWheel(widget, when);
}

bool QuietWheel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Wheel) return false;
  if (when_ == kWithoutFocus && static_cast<QWidget*>(watched)->hasFocus()) return false;
  event->ignore();  // and so it goes on to the page
  return true;
}

}  // namespace norvik::desktop
