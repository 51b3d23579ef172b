// A line above the pages that says what came of something: an icon, a sentence that wraps, buttons for what a
// person can do about it, and a button that closes it. Never takes the keyboard focus; a screen reader reads
// it as an alert or as a status.
#pragma once

#include <QAccessible>
#include <QFrame>
#include <functional>
#include <vector>

#include "src/frontends/shared/interface/window_messages.h"

class QProgressBar;
class QPushButton;
class QTimer;
class QToolButton;

namespace norvik::desktop {

class NoteLabel;
class StatusIcon;

class MessageLine : public QFrame {
 public:
  // Hidden at first. `name` is the object name, from which those of its parts are made.
  MessageLine(const QString& name, QWidget* parent);

  // Shows a message in place of the one before. Messages of success go by themselves after a while.
  void showMessage(const WindowMessage& message);
  // Shows a message that only its actions end, without a close button. Its words may change each second
  // without a screen reader saying so each time.
  void showLasting(const WindowMessage& message);
  void showSilently(const std::string& sentence);
  // Shows that something is under way, `done` of `all` seconds of it, 0 of 0 where nobody knows how long it
  // takes; without a close button.
  void showProgress(const QString& sentence, int done, int all);
  void clear();
  // Hides a message of success; the others stay.
  void clearPassing();

  bool isEmpty() const { return message_.isEmpty(); }
  const WindowMessage& message() const { return message_; }

  // A person pressed a button of the message, or closed it. The message stays until another one is shown.
  std::function<void(MessageAction)> acted;
  std::function<void()> closed;

  // An alert where a person has to do something, a status elsewhere.
  QAccessible::Role accessibleRole() const;

 protected:
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void present();
  void showButtons();
  void announce();

  WindowMessage message_;
  StatusIcon* icon_;
  NoteLabel* sentence_;
  QProgressBar* bar_;
  std::vector<QPushButton*> buttons_;
  QToolButton* close_ = nullptr;
  QTimer* passing_;
};

}  // namespace norvik::desktop
