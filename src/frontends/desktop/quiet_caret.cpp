// The flashing of all carets is one setting of the application; only one field has the keyboard at a time.
#include "src/frontends/desktop/quiet_caret.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <chrono>

namespace norvik::desktop {

namespace {
constexpr std::chrono::seconds kUntilRest{10};
}  // namespace

QuietCaret::QuietCaret(QWidget* field) : QObject(field), flashTime_(QApplication::cursorFlashTime()) {
  rest_.setParent(this);
  rest_.setObjectName(QStringLiteral("caretRest"));
  rest_.setSingleShot(true);
  rest_.setInterval(kUntilRest);
  connect(&rest_, &QTimer::timeout, this, [] { QApplication::setCursorFlashTime(0); });
  field->installEventFilter(this);
}

void QuietCaret::quiet(QWidget* field) {
  new QuietCaret(field);
}

bool QuietCaret::eventFilter(QObject* /*watched*/, QEvent* event) {
  switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::KeyPress:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
      QApplication::setCursorFlashTime(flashTime_);
      rest_.start();
      break;
    case QEvent::FocusOut:
      QApplication::setCursorFlashTime(flashTime_);
      rest_.stop();
      break;
    default:
      break;
  }
  return false;
}

}  // namespace norvik::desktop
