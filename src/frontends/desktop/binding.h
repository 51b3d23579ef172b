// A control of the model and the widget that mirrors it, kept in step both ways. One kind of binding for each
// kind of control; none knows a setting by name. Touches Qt Widgets and the pane module.
#pragma once

#include <QString>
#include <QWidget>
#include <functional>
#include <memory>

#include "src/server/mac/pane/pane.h"
#include "src/server/mac/ui/control.h"
#include "src/server/mac/ui/interface_description.h"

namespace norvik::desktop {

class Binding : public ControlObserver {
 public:
  Binding(NVKServerPrefs& pane, Control& control, const ControlDescription& description);
  ~Binding() override;
  Binding(const Binding&) = delete;
  Binding& operator=(const Binding&) = delete;

  Control& control() const { return control_; }
  const ControlDescription& description() const { return description_; }
  // The widget that a person works; owned by its parent widget.
  QWidget* widget() const { return widget_; }

  // Called after a person's edit reached the model and its action was sent.
  std::function<void()> edited;
  // Called after the widget took up a change of the model, so that what stands around it can follow.
  std::function<void()> changed;

  // Whether the control has a place on its page at all.
  bool isVisible() const { return !control_.isHidden() && !control_.isRemoved(); }

  // The model changed: brings the widget up to it.
  void controlChanged(Control& control) final;

 protected:
  // To be called once by the constructor of each kind, when the widget can take the model's state. Names the
  // widget after the outlet, gives it its accessible texts and its tool tip, and shows the model's state.
  void attach(QWidget* widget);
  // Shows the model's value in the widget, setting nothing that is set already and sending nothing back.
  virtual void showValue() = 0;
  // Whether the widget itself is seen in its place.
  virtual bool isDrawn() const { return isVisible(); }
  // The value was edited by a person and stands in the model: sends the action.
  void sendAction();
  // The same for edits that send none.
  void tellEdited();

  NVKServerPrefs& pane() const { return pane_; }

 private:
  void showState();

  NVKServerPrefs& pane_;
  Control& control_;
  const ControlDescription& description_;
  QWidget* widget_ = nullptr;
};

// The binding for a control of the description; its widget is made as a child of `parent`. Null for kinds
// that have a place of their own in the window: the sidebar and the tab view.
std::unique_ptr<Binding> makeBinding(NVKServerPrefs& pane, Control& control,
                                     const ControlDescription& description, QWidget* parent);

// A UTF-8 text of the model or of the description.
QString text(std::string_view utf8);

}  // namespace norvik::desktop
