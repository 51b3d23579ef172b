// The sidebar: the rows of the model's outline view as a list. The model decides what can be selected and
// which page shows.
#pragma once

#include <QListWidget>
#include <vector>

#include "src/server/mac/ui/interface_description.h"
#include "src/server/mac/ui/outline_view.h"

namespace norvik::desktop {

class Sidebar : public QListWidget, public ControlObserver {
 public:
  // `outline`, `tabs` and `interface` outlive the sidebar.
  Sidebar(OutlineView& outline, const TabView& tabs, const InterfaceDescription& interface, QWidget* parent);
  ~Sidebar() override;

  // The model's rows or selection changed.
  void controlChanged(Control& control) override;

  // Chooses the next page that can be chosen (`step` 1), or the one before (-1), around the end.
  void choosePage(int step);
  // Chooses the page of a tab, counted from 0. False if it cannot be chosen.
  bool chooseTab(std::size_t tab);
  // Marks the pages that hold pending changes: how many each tab has.
  void markPages(const std::vector<std::size_t>& changes);
  // The page of the last session: chosen now, or by returnToPage() when the lock is open.
  void restoreRow(int row);
  // The row for restoreRow() in the next session.
  int rowToRestore() const;
  // Goes back to the page that was left by locking, if it can be chosen and no other has been chosen since.
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
  void showMarks();
  std::size_t changesOf(int row) const;
  QString iconOf(int row) const;

  OutlineView& outline_;
  const TabView& tabs_;
  const InterfaceDescription& interface_;
  std::vector<std::size_t> changes_;  // of each tab
  int rowToReturnTo_ = -1;            // the page that only the lock hides; -1 for none
};

}  // namespace norvik::desktop
