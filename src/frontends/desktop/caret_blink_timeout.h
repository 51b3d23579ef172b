// Stops the caret of a field from blinking when nothing has been typed for a while; it stays visible. A
// window that is left alone paints nothing, and costs nothing.
#pragma once

#include <QObject>
#include <QTimer>

class QWidget;

namespace norvik::desktop {

class CaretBlinkTimeout : public QObject {
 public:
  // For as long as the field lives.
  static void install(QWidget* field);

 private:
  explicit CaretBlinkTimeout(QWidget* field);
  bool eventFilter(QObject* watched, QEvent* event) override;
  QTimer timeout_;
  const int flashTime_;  // the desktop's, in milliseconds
};

}  // namespace norvik::desktop
