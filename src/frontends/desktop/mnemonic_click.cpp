// An event filter for the mnemonics of buttons and of the labels that are their buddies.
#include "src/frontends/desktop/mnemonic_click.h"

#include <QAbstractButton>
#include <QLabel>
#include <QShortcutEvent>

namespace norvik::desktop {

namespace {

class MnemonicClick : public QObject {
 public:
  MnemonicClick(QWidget* owner, QAbstractButton* button) : QObject(owner), button_(button) {
    owner->installEventFilter(this);
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

void clickAtMnemonic(QAbstractButton* button) {
  new MnemonicClick(button, button);
}

void clickAtMnemonic(QAbstractButton* button, QLabel* label) {
  label->setBuddy(button);
  new MnemonicClick(label, button);
}

}  // namespace norvik::desktop
