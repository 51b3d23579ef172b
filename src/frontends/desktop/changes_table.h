// A list of settings with the values before and after a change: of what is pending, or of what a profile
// would make pending.
#pragma once

#include <QTreeWidget>
#include <vector>

#include "src/frontends/shared/change/change_report.h"

namespace norvik::desktop {

class ChangesTable : public QTreeWidget {
 public:
  ChangesTable(const QString& name, QWidget* parent);

  // The row that was chosen stays chosen, or the one that takes its place.
  void showChanges(const std::vector<SettingChange>& changes);
  // The index of the chosen change; -1 for none.
  int chosen() const { return indexOfTopLevelItem(currentItem()); }
};

}  // namespace norvik::desktop
