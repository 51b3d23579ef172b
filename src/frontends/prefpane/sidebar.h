// The sidebar: the toolkit's outline view over the model's, with a mark behind each page that holds pending
// changes. A plain C++ header.
#pragma once

#include <cstddef>
#include <vector>

#include "src/frontends/prefpane/handles.h"
#include "src/frontends/shared/icons/line_drawing.h"
#include "src/server/mac/pane/pane.h"

namespace norvik::prefpane {

class Sidebar : public ControlObserver {
 public:
  // Both outlive it.
  Sidebar(NVKServerPrefs& pane, const InterfaceDescription& interface);
  ~Sidebar() override;
  Sidebar(const Sidebar&) = delete;
  Sidebar& operator=(const Sidebar&) = delete;

  // An NSScrollView with the outline view in it.
  void* view() const { return scroll_.get(); }
  // The NSOutlineView.
  void* outline() const { return outline_.get(); }

  // What a person's click on the row of a page does; false if a lock keeps the page closed.
  bool choosePage(std::size_t tab);
  // How many changes each page holds, in the order of the tabs.
  void markPages(const std::vector<std::size_t>& changes);
  std::size_t changesOf(const ConfBarNode& node) const;
  // Of the node's page; null for a heading.
  const LineDrawing* iconOf(const ConfBarNode& node) const;

  // The model's rows or its selection changed.
  void controlChanged(Control& control) override;
  // A person selected a row.
  void rowChosen();

 private:
  void showRows();

  NVKServerPrefs& pane_;
  const InterfaceDescription& interface_;
  Handle source_;
  Handle outline_;
  Handle scroll_;
  std::vector<std::size_t> changes_;
  bool showing_ = false;  // the model, and no person, is changing the sidebar
};

}  // namespace norvik::prefpane
