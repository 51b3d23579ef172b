// A control of the model and the toolkit's view that mirrors it, kept in step both ways. A table has a row
// for each kind of control; nothing here knows a setting by name. A plain C++ header.
#pragma once

#include <functional>

#include "src/frontends/prefpane/handles.h"
#include "src/server/mac/pane/pane.h"
#include "src/server/mac/ui/control.h"
#include "src/server/mac/ui/interface_description.h"

namespace norvik::prefpane {

struct BindingKind;

class Binding : public ControlObserver {
 public:
  // Makes the view and shows the model's state in it. All three outlive the binding. The control is neither
  // the sidebar nor the tab view, which MainView shows.
  Binding(NVKServerPrefs& pane, Control& control, const ControlDescription& description);
  ~Binding() override;
  Binding(const Binding&) = delete;
  Binding& operator=(const Binding&) = delete;

  Control& control() const { return control_; }
  const ControlDescription& description() const { return description_; }
  // An NSView, at first in the size that its contents need.
  void* view() const { return view_.get(); }

  // What a press of a button does in place of the pane's own action; none for that.
  std::function<void()> command;
  // Called after a person's edit has reached the model and its action was sent.
  std::function<void()> edited;
  // Called after the view has shown a change of the model.
  std::function<void()> changed;

  // Whether a person may use the view where the model allows it; they may at first.
  void setOffered(bool isOffered);

  // The model changed: updates the view, setting nothing that is already set.
  void controlChanged(Control& control) override;
  // A person used the view.
  void viewChanged();

 private:
  void showModel();

  NVKServerPrefs& pane_;
  Control& control_;
  const ControlDescription& description_;
  const BindingKind& kind_;
  bool isOffered_ = true;
  Handle view_;
  Handle target_;
};

}  // namespace norvik::prefpane
