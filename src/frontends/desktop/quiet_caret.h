// Lets the caret of a field rest, in sight, when nobody has typed for a while: a window that is left alone
// paints nothing, and costs nothing.
#pragma once

#include <QObject>
#include <QTimer>

class QWidget;

namespace norvik::desktop {

class QuietCaret : public QObject {
 public:
  // The field's caret rests from now on. Lives as long as the field.
  static void quiet(QWidget* field);

 private:
  explicit QuietCaret(QWidget* field);
  bool eventFilter(QObject* watched, QEvent* event) override;
  QTimer rest_;
  const int flashTime_;  // as the desktop has it, in milliseconds
};

}  // namespace norvik::desktop
