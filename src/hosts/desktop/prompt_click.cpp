// An event filter for the letters of buttons.
#include "prompt_click.h"

#include <QAbstractButton>
#include <QShortcutEvent>

namespace norvik::desktop {

namespace {

class PromptClick : public QObject {
 public:
  explicit PromptClick(QAbstractButton* button) : QObject(button), button_(button) {
    button->installEventFilter(this);
  }

 private:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() != QEvent::Shortcut || static_cast<QShortcutEvent*>(event)->isAmbiguous()) return false;
    button_->click();
    return true;
  }

  QAbstractButton* button_;
};

}  // namespace

void clickPromptly(QAbstractButton* button) {
  new PromptClick(button);
}

}  // namespace norvik::desktop
