// The ladder's short result on the page of the server: for each service whether clients can connect and, if
// not, the first reason and what to do; with the button that opens the ladder.
#pragma once

#include <QPushButton>
#include <QVBoxLayout>
#include <QWidget>
#include <vector>

#include "src/frontends/shared/interface/window_texts.h"
#include "src/frontends/shared/reach/ladder.h"

class QLabel;

namespace norvik::desktop {

class SecondaryLabel;
class StatusIcon;

class ReachCard : public QWidget {
 public:
  explicit ReachCard(QWidget* parent);

  // What was found; nothing while somebody looks. Until it is called nothing is said. Repaints only what
  // differs.
  void showServices(const std::vector<ServiceReach>& services);
  QPushButton& button() { return *button_; }

 private:
  struct Line {
    StatusIcon* icon;
    QLabel* sentence;
    SecondaryLabel* advice;
  };

  void addLine();
  static void showLine(const Line& line, MessageKind kind, const QString& words, const QString& advice);

  QVBoxLayout* lines_;
  QPushButton* button_;
  std::vector<Line> shown_;
};

}  // namespace norvik::desktop
