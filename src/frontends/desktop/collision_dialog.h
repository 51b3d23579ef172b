// Asks about settings that somebody else has changed too: for each the value before, theirs and the person's
// own, and which of the two it gets.
#pragma once

#include <QDialog>
#include <vector>

#include "src/frontends/shared/change/settings_change.h"

class QGridLayout;
class QRadioButton;

namespace norvik::desktop {

class CollisionDialog : public QDialog {
 public:
  // The person's own values are chosen at first. Accepted where the choice counts; Escape rejects.
  CollisionDialog(QWidget* window, const std::vector<Collision>& collisions);

  // In the order given.
  std::vector<Side> sides() const;

 private:
  void addRow(QGridLayout& grid, const Collision& collision);
  QWidget* makeTable(const std::vector<Collision>& collisions);

  std::vector<QRadioButton*> theirs_;
};

}  // namespace norvik::desktop
