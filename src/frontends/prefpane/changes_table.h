// The table in the list of pending changes: setting, page, old and new value. A plain C++ header.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "src/frontends/prefpane/handles.h"
#include "src/frontends/shared/change/change_report.h"

namespace norvik::prefpane {

class ChangesTable {
 public:
  ChangesTable(double width, double height);
  ~ChangesTable();
  ChangesTable(const ChangesTable&) = delete;
  ChangesTable& operator=(const ChangesTable&) = delete;

  // An NSScrollView with the NSTableView in it.
  void* view() const { return scroll_.get(); }
  void* table() const { return table_.get(); }

  // The row that was chosen stays chosen, or the one that took its place.
  void show(const std::vector<SettingChange>& changes);
  // The number of the chosen row; -1 for none.
  int chosen() const;

  // Called when a person has chosen another row, or has clicked twice on one.
  std::function<void()> chosenChanged;
  std::function<void()> opened;

 private:
  Handle source_;
  Handle target_;
  Handle table_;
  Handle scroll_;
};

}  // namespace norvik::prefpane
