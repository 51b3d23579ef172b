// Switches boxes, one and then two at a time, and asks the enabling pass each time.
#include "src/frontends/shared/edits/editability.h"

#include <algorithm>

#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/language/language.h"

namespace norvik {

namespace {

// Switches a box for as long as it lives.
class SwitchedBox {
 public:
  explicit SwitchedBox(Control& box) : box_(box), state_(box.state()) {
    box.setState(box.isOn() ? kOffState : kOnState);
  }
  ~SwitchedBox() { box_.setState(state_); }
  SwitchedBox(const SwitchedBox&) = delete;
  SwitchedBox& operator=(const SwitchedBox&) = delete;

  bool isOn() const { return box_.isOn(); }

 private:
  Control& box_;
  int state_;
};

bool enables(EditedPane& edited, const Control& control) {
  edited.pane().enableGui(true, false);
  return control.isEnabled();
}

std::vector<PaneSetting*> boxes(EditedPane& edited) {
  std::vector<PaneSetting*> result;
  for (PaneSetting& setting : edited.settings()) {
    if (setting.description().first().kind == ControlKind::checkBox) result.push_back(&setting);
  }
  return result;
}

std::optional<std::vector<NeededSwitch>> search(EditedPane& edited, const Control& control) {
  if (enables(edited, control)) return std::vector<NeededSwitch>();
  const auto candidates = boxes(edited);
  for (PaneSetting* one : candidates) {
    const SwitchedBox first(*one->controls().front());
    if (enables(edited, control)) return std::vector<NeededSwitch>{{one->name(), first.isOn()}};
  }
  for (std::size_t i = 0; i < candidates.size(); ++i) {
    const SwitchedBox first(*candidates[i]->controls().front());
    for (std::size_t j = i + 1; j < candidates.size(); ++j) {
      const SwitchedBox second(*candidates[j]->controls().front());
      if (!enables(edited, control)) continue;
      return std::vector<NeededSwitch>{{candidates[i]->name(), first.isOn()},
                                       {candidates[j]->name(), second.isOn()}};
    }
  }
  return std::nullopt;
}

// The editability of the control at `index` among the setting's.
Editability editabilityAt(EditedPane& edited, PaneSetting& setting, std::size_t index) {
  if (setting.description().isAdministrators() && !edited.pane().authorized())
    return {Obstacle::locked, translated("locked")};
  const Control& control = *setting.controls()[index];
  auto switches = switchesToEnable(edited, control);
  if (!switches) return {Obstacle::notAvailable, translated("not available")};
  const PaneSetting* required = edited.settingOf(setting.description().controls[index]->requiresOutlet);
  const auto isRequired = [&](const NeededSwitch& needed) {
    return required != nullptr && needed.on && needed.name == required->name();
  };
  const bool turnsOn = std::erase_if(*switches, isRequired) > 0;
  if (!switches->empty())
    return {Obstacle::needsSwitches, sentence("needs {1}", {switchesInWords(*switches)})};
  return {Obstacle::none, turnsOn ? sentence("turns on {1}", {required->name()}) : ""};
}

}  // namespace

std::optional<std::vector<NeededSwitch>> switchesToEnable(EditedPane& edited, const Control& control) {
  auto switches = search(edited, control);
  edited.pane().enableGui(true, false);
  return switches;
}

bool switchingDisables(EditedPane& edited, Control& box, const Control& control) {
  bool disables = false;
  {
    const SwitchedBox switched(box);
    disables = !enables(edited, control);
  }
  edited.pane().enableGui(true, false);
  return disables;
}

void whileSwitched(EditedPane& edited, Control& box, const std::function<void()>& step) {
  {
    const SwitchedBox switched(box);
    edited.pane().enableGui(true, false);
    step();
  }
  edited.pane().onStateTimer();
  edited.pane().enableGui(true, false);
}

std::string switchesInWords(const std::vector<NeededSwitch>& switches) {
  std::vector<std::string> words;
  words.reserve(switches.size());
  for (const NeededSwitch& needed : switches) words.push_back(needed.name + (needed.on ? "=on" : "=off"));
  return allOf(words);
}

Editability editabilityOf(EditedPane& edited, PaneSetting& setting) {
  std::vector<Editability> each;
  for (std::size_t i = 0; i < setting.controls().size(); ++i) {
    each.push_back(editabilityAt(edited, setting, i));
  }
  if (std::ranges::none_of(each, &Editability::editable)) return each.front();
  std::vector<std::string> choices;
  for (std::size_t i = 0; i < each.size(); ++i) {
    if (each[i].editable()) choices.push_back(setting.description().controls[i]->choice);
  }
  const Editability& first = *std::ranges::find_if(each, &Editability::editable);
  if (choices.size() == each.size()) return first;
  const std::string only = sentence("only {1}", {oneOf(choices)});
  return {Obstacle::none, first.remark.empty() ? only : sentence("{1}, {2}", {only, first.remark})};
}

Editability editabilityOf(EditedPane& edited, PaneSetting& setting, int64_t value) {
  return editabilityAt(edited, setting,
                       setting.description().isChoice() ? static_cast<std::size_t>(value) : 0);
}

}  // namespace norvik
