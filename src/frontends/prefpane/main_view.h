// The pane's main view: the sidebar at the left, the pages at the right, the lock and the buttons below.
// Mirrors the model and has no rules of its own. A plain C++ header.
#pragma once

#include <memory>
#include <vector>

#include "src/frontends/prefpane/binding.h"
#include "src/frontends/prefpane/handles.h"
#include "src/frontends/prefpane/page_view.h"
#include "src/server/mac/pane/pane.h"

namespace norvik::prefpane {

class MainView : public ControlObserver {
 public:
  // `outlineSource` is the NSOutlineView's data source and delegate, borrowed. Pane and description outlive
  // the view.
  MainView(NVKServerPrefs& pane, const InterfaceDescription& interface, void* outlineSource);
  ~MainView() override;
  MainView(const MainView&) = delete;
  MainView& operator=(const MainView&) = delete;

  // An NSView.
  void* view() const { return view_.get(); }

  // Gives the toolkit's view the frame of the model's main view.
  void fit();
  // Draws a control of the model, or the whole view, at once.
  void display(const Control& control);
  void displayIfNeeded();
  // To be called after a tick of the pane's timer, and after a person's edit.
  void ticked();
  void edited();

  // The sidebar or the page of the model changed.
  void controlChanged(Control& control) override;
  // A person selected a row of the sidebar.
  void rowChosen();

 private:
  void makeSidebar(void* outlineSource);
  void makePages();
  double makeFrame();
  void placeButtons(double width);
  void showRows();
  void showPage();
  PageView* shownPage() const;  // null for none
  void refreshPage();

  NVKServerPrefs& pane_;
  const InterfaceDescription& interface_;
  Handle view_;
  Handle outline_;
  Handle scroll_;
  Handle tabs_;
  std::vector<std::unique_ptr<PageView>> pages_;
  std::vector<std::unique_ptr<Binding>> frame_;
  bool showing_ = false;  // the model, and no person, is changing the sidebar
  int ticksToNotes_ = 0;
};

}  // namespace norvik::prefpane
