// The line beside the lock: the server's state and the address to connect to, seen while the lock is closed
// too. And the button that shows the whole ladder, which the window places.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>

#include "src/frontends/desktop/state_dot.h"

namespace norvik::desktop {

class ReachLine : public QWidget {
 public:
  // `pane` outlives the line.
  ReachLine(const NVKServerPrefs& pane, QWidget* parent);

  // Shortened where there is no room; then the tip has the whole text. The dot follows the pane.
  void showLine(const QString& line);
  QString line() const { return line_; }
  // To be placed beside the line.
  QPushButton& button() { return *button_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void fit();

  StateDot* dot_;
  QLabel* label_;
  QPushButton* button_;
  QString line_;
};

}  // namespace norvik::desktop
