// Keeps the wheel from changing a control that the pointer only passes over: the page scrolls instead.
#pragma once

#include <QObject>

class QWidget;

namespace norvik::desktop {

class WheelFilter : public QObject {
 public:
  enum When { kAlways, kWithoutFocus };

  // Leaves the wheel to the page at these times. The filter lives as long as the widget.
  static void install(QWidget* widget, When when);

 private:
  WheelFilter(QWidget* widget, When when);
  bool eventFilter(QObject* watched, QEvent* event) override;
  When when_;
};

}  // namespace norvik::desktop
