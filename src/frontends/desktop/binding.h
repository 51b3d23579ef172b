// A binding keeps a control of the model and its widget in step, both ways. One kind of binding for each kind
// of control; none knows a setting by name. Uses Qt Widgets and the pane module.
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
  // The widget that a person uses; owned by its parent widget.
  QWidget* widget() const { return widget_; }

  // What a press does in place of the pane's own action, for the buttons around which the window does more.
  // None for the pane's action alone.
  std::function<void()> command;
  // Called after a person's edit reached the model and its action was sent.
  std::function<void()> edited;
  // Called after the widget showed a change of the model, so that what is beside it can follow.
  std::function<void()> changed;

  // Whether a person may use the widget where the model allows it; they may at first.
  void setOffered(bool isOffered);

  // Whether the control appears on its page at all.
  bool isVisible() const { return !control_.isHidden() && !control_.isRemoved(); }

  // The model changed: updates the widget.
  void controlChanged(Control& control) final;

 protected:
  // To be called once by the constructor of each kind, when the widget can take the model's state. Names the
  // widget after the outlet, gives it its accessible texts and its tool tip, and shows the model's state.
  void attach(QWidget* widget);
  // Shows the model's value in the widget, setting nothing that is set already and sending nothing back.
  virtual void showValue() = 0;
  // Whether the widget itself is drawn in its place.
  virtual bool isDrawn() const { return isVisible(); }
  // A person edited the value and the model has it: sends the action.
  void sendAction();
  // The same for edits that send none.
  void notifyEdited();

  NVKServerPrefs& pane() const { return pane_; }

 private:
  void showState();

  NVKServerPrefs& pane_;
  Control& control_;
  const ControlDescription& description_;
  QWidget* widget_ = nullptr;
  bool isOffered_ = true;
};

// The binding for a control of the description; its widget is a new child of `parent`. Null for the sidebar
// and the tab view, which the window makes itself.
std::unique_ptr<Binding> makeBinding(NVKServerPrefs& pane, Control& control,
                                     const ControlDescription& description, QWidget* parent);

// A UTF-8 text of the model or of the description.
QString text(std::string_view utf8);
// A constant in the language of the person.
QString translatedText(std::string_view english);

}  // namespace norvik::desktop
