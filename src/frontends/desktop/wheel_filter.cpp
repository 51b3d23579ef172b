// An event filter for wheel events.
#include "src/frontends/desktop/wheel_filter.h"

#include <QEvent>
#include <QWidget>

namespace norvik::desktop {

WheelFilter::WheelFilter(QWidget* widget, When when) : QObject(widget), when_(when) {
  widget->installEventFilter(this);
}

void WheelFilter::install(QWidget* widget, When when) {
  new WheelFilter(widget, when);
}

bool WheelFilter::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Wheel) return false;
  if (when_ == kWithoutFocus && static_cast<QWidget*>(watched)->hasFocus()) return false;
  event->ignore();  // so that it goes on to the page
  return true;
}

}  // namespace norvik::desktop
