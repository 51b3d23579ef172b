// A person at the controls.
#include "src/frontends/scenario/commands.h"
#include "src/frontends/scenario/malformed.h"

namespace norvik::scenario {

namespace {

void setState(Control& control, Arguments& arguments) {
  control.setState(arguments.integer<int32_t>(kMixedState, kOnState));
}
void setValue(Control& control, Arguments& arguments) {
  control.setDoubleValue(arguments.real());
}
void setIndex(Control& control, Arguments& arguments) {
  control.selectItemAtIndex(arguments.integer());
}
void setText(Control& control, Arguments& arguments) {
  control.setStringValue(arguments.text());
}

struct Setter {
  ControlKind kind;
  void (*set)(Control& control, Arguments& arguments);
};

constexpr Setter kSetters[] = {
    {ControlKind::checkBox, setState}, {ControlKind::radioButton, setState}, {ControlKind::slider, setValue},
    {ControlKind::popUp, setIndex},    {ControlKind::textField, setText},    {ControlKind::label, setText},
};

void set(Session& session, Arguments& arguments) {
  Control& control = session.control(arguments.word());
  for (const Setter& setter : kSetters) {
    if (setter.kind == control.kind()) return setter.set(control, arguments);
  }
  throw Malformed(std::string(control.name()) + " has no value to set");
}

void click(Session& session, Arguments& arguments) {
  Control& control = session.control(arguments.word());
  session.pane().buttonClicked(control);
}

// Why the mouse does not reach the control; null where it does.
const char* obstacle(const Control& control) {
  if (control.isRemoved()) return "removed";
  if (control.isHidden()) return "hidden";
  return control.isEnabled() ? nullptr : "disabled";
}

void press(Session& session, Arguments& arguments) {
  Control& control = session.control(arguments.word());
  if (const char* why = obstacle(control)) return session.print(why);
  if (control.kind() == ControlKind::checkBox) control.setState(control.isOn() ? kOffState : kOnState);
  if (control.kind() == ControlKind::radioButton) control.setState(kOnState);
  session.pane().buttonClicked(control);
}

void selectRow(Session& session, Arguments& arguments) {
  session.pane().ib_oview_confBar.clickRow(arguments.integer<int32_t>());
}

constexpr CommandRow kControlCommands[] = {
    {"set", set}, {"click", click}, {"press", press}, {"select-row", selectRow}};

}  // namespace

std::span<const CommandRow> controlCommands() {
  return kControlCommands;
}

}  // namespace norvik::scenario
