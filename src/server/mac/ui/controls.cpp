// The controls by their outlet names, and how an interface description becomes the controls of a pane.
#include <string_view>
#include <utility>

#include "src/server/mac/pane/pane.h"
#include "src/server/mac/ui/control_table.h"

namespace norvik {

std::vector<Control*> NVKServerPrefs::outlets() {
  std::vector<Control*> controls;
  for (const ControlRow& row : controlTable()) controls.push_back(&row.control(*this));
  return controls;
}

Control* NVKServerPrefs::outlet(std::string_view name) {
  for (Control* control : outlets()) {
    if (control->name() == name) return control;
  }
  return nullptr;
}

void NVKServerPrefs::connectOutlets(const InterfaceDescription& interface) {
  for (const ControlRow& row : controlTable()) {
    const ControlDescription* description = interface.find(row.outlet);
    if (description != nullptr) row.control(*this).describe(row.outlet, *description);
  }

  mainView_.setFrame({0, 0, interface.size.width, interface.size.height});
  const auto place = [&](View& superview, const ControlDescription& description) {
    if (Control* control = outlet(description.outlet)) superview.addSubview(*control);
  };
  for (const ControlDescription& description : interface.frame) place(mainView_, description);
  std::vector<TabViewItem> pages;
  for (const TabDescription& tab : interface.tabs) {
    pages.push_back({tab.label});
    for (const SectionDescription& section : tab.sections) {
      for (const RowDescription& row : section.rows) {
        for (const ControlDescription& description : row.controls) place(ib_tview_confView, description);
      }
    }
  }
  ib_tview_confView.setItems(std::move(pages));
}

}  // namespace norvik
