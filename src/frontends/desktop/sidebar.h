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

  // Chooses the next page that can be chosen (`step` 1), or the one before (-1), around the end.
  void choosePage(int step);
  // The page of the last time: chosen now, or by returnToPage() once the lock is open.
  void restoreRow(int row);
  // What restoreRow() is to be given the next time.
  int rowToRestore() const;
  // Goes back to the page that locking left, where it can be chosen and no other has been chosen since.
  void returnToPage();

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

 private:
  QModelIndex firstFrom(int row, int step) const;
  void chooseRow(int row);
  bool canBeChosen(int row) const;
  void showRows();
  void showSelection();

  OutlineView& outline_;
  int rowToReturnTo_ = -1;  // the page that only the lock keeps from showing; -1 for none
};

}  // namespace norvik::desktop
