// The sidebar: the rows of the model's outline view as a list. The model decides what can be selected and
// which page shows.
#pragma once

#include <QListWidget>

#include "src/server/mac/ui/interface_description.h"
#include "src/server/mac/ui/outline_view.h"

namespace norvik::desktop {

class Sidebar : public QListWidget, public ControlObserver {
 public:
  // `outline` outlives the sidebar.
  Sidebar(OutlineView& outline, const ControlDescription& description, QWidget* parent);
  ~Sidebar() override;

  // The model's rows or selection changed.
  void controlChanged(Control& control) override;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

 private:
  QModelIndex firstFrom(int row, int step) const;
  void showRows();
  void showSelection();

  OutlineView& outline_;
};

}  // namespace norvik::desktop
