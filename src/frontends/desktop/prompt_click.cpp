// An event filter for the letters of buttons, their own and those of labels that speak for them.
#include "src/frontends/desktop/prompt_click.h"

#include <QAbstractButton>
#include <QLabel>
#include <QShortcutEvent>

namespace norvik::desktop {

namespace {

class PromptClick : public QObject {
 public:
  PromptClick(QWidget* bearer, QAbstractButton* button) : QObject(bearer), button_(button) {
    bearer->installEventFilter(this);
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
  new PromptClick(button, button);
}

void clickPromptly(QAbstractButton* button, QLabel* words) {
  words->setBuddy(button);
  new PromptClick(words, button);
}

}  // namespace norvik::desktop
