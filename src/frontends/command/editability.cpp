// Turns boxes over, one and then two at a time, and looks what the enabling pass makes of it.
#include "src/frontends/command/editability.h"

#include <algorithm>

#include "src/frontends/shared/checks/value_check.h"

namespace norvik::command {

namespace {

// Turns a box over for as long as it lives.
class TurnedOver {
 public:
  explicit TurnedOver(Control& box) : box_(box), state_(box.state()) {
    box.setState(box.isOn() ? kOffState : kOnState);
  }
  ~TurnedOver() { box_.setState(state_); }
  TurnedOver(const TurnedOver&) = delete;
  TurnedOver& operator=(const TurnedOver&) = delete;

  bool isOn() const { return box_.isOn(); }

 private:
  Control& box_;
  int state_;
};

bool enables(Session& session, const Control& control) {
  session.pane().enableGui(true, false);
  return control.isEnabled();
}

std::vector<PaneSetting*> boxes(Session& session) {
  std::vector<PaneSetting*> result;
  for (PaneSetting& setting : session.settings()) {
    if (setting.description().first().kind == ControlKind::checkBox) result.push_back(&setting);
  }
  return result;
}

std::optional<std::vector<NeededSwitch>> search(Session& session, const Control& control) {
  if (enables(session, control)) return std::vector<NeededSwitch>();
  const auto candidates = boxes(session);
  for (PaneSetting* one : candidates) {
    const TurnedOver first(*one->controls().front());
    if (enables(session, control)) return std::vector<NeededSwitch>{{one->name(), first.isOn()}};
  }
  for (std::size_t i = 0; i < candidates.size(); ++i) {
    const TurnedOver first(*candidates[i]->controls().front());
    for (std::size_t j = i + 1; j < candidates.size(); ++j) {
      const TurnedOver second(*candidates[j]->controls().front());
      if (!enables(session, control)) continue;
      return std::vector<NeededSwitch>{{candidates[i]->name(), first.isOn()},
                                       {candidates[j]->name(), second.isOn()}};
    }
  }
  return std::nullopt;
}

// The editability of the control at `index` among the setting's.
Editability editabilityAt(Session& session, PaneSetting& setting, std::size_t index) {
  if (setting.description().isAdministrators() && !session.pane().authorized()) return {false, "locked"};
  const Control& control = *setting.controls()[index];
  auto switches = switchesToEnable(session, control);
  if (!switches) return {false, "not available"};
  const PaneSetting* required = session.settingOf(setting.description().controls[index]->requires_outlet);
  const auto isRequired = [&](const NeededSwitch& needed) {
    return required != nullptr && needed.on && needed.name == required->name();
  };
  const bool turnsOn = std::erase_if(*switches, isRequired) > 0;
  if (!switches->empty()) return {false, "needs " + switchesInWords(*switches)};
  return {true, turnsOn ? "turns on " + required->name() : ""};
}

}  // namespace

std::optional<std::vector<NeededSwitch>> switchesToEnable(Session& session, const Control& control) {
  auto switches = search(session, control);
  session.pane().enableGui(true, false);
  return switches;
}

std::string switchesInWords(const std::vector<NeededSwitch>& switches) {
  std::vector<std::string> words;
  words.reserve(switches.size());
  for (const NeededSwitch& needed : switches) words.push_back(needed.name + (needed.on ? "=on" : "=off"));
  return listInWords(words, "and");
}

Editability editabilityOf(Session& session, PaneSetting& setting) {
  std::vector<Editability> each;
  for (std::size_t i = 0; i < setting.controls().size(); ++i) {
    each.push_back(editabilityAt(session, setting, i));
  }
  if (std::ranges::none_of(each, &Editability::editable)) return each.front();
  std::vector<std::string> choices;
  for (std::size_t i = 0; i < each.size(); ++i) {
    if (each[i].editable) choices.push_back(setting.description().controls[i]->choice);
  }
  const Editability& first = *std::ranges::find_if(each, &Editability::editable);
  if (choices.size() == each.size()) return first;
  const std::string only = "only " + listInWords(choices, "or");
  return {true, first.remark.empty() ? only : only + ", " + first.remark};
}

Editability editabilityOf(Session& session, PaneSetting& setting, int64_t value) {
  return editabilityAt(session, setting,
                       setting.description().isChoice() ? static_cast<std::size_t>(value) : 0);
}

}  // namespace norvik::command
