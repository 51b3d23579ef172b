// Blinking is one setting of the whole application; only one field has the keyboard focus at a time.
#include "src/frontends/desktop/caret_blink_timeout.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <chrono>

namespace norvik::desktop {

namespace {
constexpr std::chrono::seconds kTimeout{10};
}  // namespace

CaretBlinkTimeout::CaretBlinkTimeout(QWidget* field)
    : QObject(field), flashTime_(QApplication::cursorFlashTime()) {
  timeout_.setParent(this);
  timeout_.setObjectName(QStringLiteral("caretBlinkTimeout"));
  timeout_.setSingleShot(true);
  timeout_.setInterval(kTimeout);
  connect(&timeout_, &QTimer::timeout, this, [] { QApplication::setCursorFlashTime(0); });
  field->installEventFilter(this);
}

void CaretBlinkTimeout::install(QWidget* field) {
  new CaretBlinkTimeout(field);
}

bool CaretBlinkTimeout::eventFilter(QObject* /*watched*/, QEvent* event) {
  switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::KeyPress:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
      QApplication::setCursorFlashTime(flashTime_);
      timeout_.start();
      break;
    case QEvent::FocusOut:
      QApplication::setCursorFlashTime(flashTime_);
      timeout_.stop();
      break;
    default:
      break;
  }
  return false;
}

}  // namespace norvik::desktop
