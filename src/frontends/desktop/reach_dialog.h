// The whole ladder for each service, with what to do, the addresses to copy and the code to scan.
#pragma once

#include <QDialog>
#include <functional>
#include <vector>

#include "src/frontends/shared/reach/ladder.h"

class QPushButton;
class QTabWidget;

namespace norvik::desktop {

class ReachDialog : public QDialog {
 public:
  explicit ReachDialog(QWidget* window);

  // In place of what was shown; the service that a person has chosen stays chosen. At first the one that
  // clients cannot reach.
  void showServices(const std::vector<ServiceReach>& services);
  // While somebody looks, the button says so and cannot be pressed.
  void setLooking(bool looking);

  // Called when a person wants to know it afresh.
  std::function<void()> lookAgain;

 private:
  QWidget* makeTab(const ServiceReach& service);

  QTabWidget* tabs_;
  QPushButton* again_;
};

}  // namespace norvik::desktop
