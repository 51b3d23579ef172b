// Loops over the tables.
#include "src/frontends/shared/change/setting_rows.h"

#include <algorithm>

#include "src/frontends/shared/change/setting_groups.h"

namespace norvik {

namespace {

std::vector<Control*> controlsOf(NVKServerPrefs& pane, const Setting& row) {
  std::vector<Control*> controls;
  for (Control NVKServerPrefs::*edits : row.controls) {
    if (edits != nullptr) controls.push_back(&(pane.*edits));
  }
  return controls;
}

bool edits(const NVKServerPrefs& pane, const Setting& row, const Control* control) {
  return std::ranges::any_of(row.controls, [&](Control NVKServerPrefs::*member) {
    return member != nullptr && &(pane.*member) == control;
  });
}

// A field or a choice shows more than the box that switches it on.
bool showsValue(const PaneSetting& setting) {
  return setting.description().first().kind != ControlKind::checkBox;
}

}  // namespace

bool isPending(const NVKServerPrefs& pane, const Setting& row) {
  return pane.differsFromStored(pane.*row.controls[0]);
}

std::vector<ControlState> controlStates(NVKServerPrefs& pane, const Setting& row) {
  std::vector<ControlState> states;
  for (Control* control : controlsOf(pane, row)) {
    states.push_back({control, control->state(), control->doubleValue(), control->indexOfSelectedItem(),
                      control->stringValue()});
  }
  return states;
}

void restoreControls(const std::vector<ControlState>& states) {
  for (const ControlState& state : states) {
    state.control->setState(state.state);
    state.control->setDoubleValue(state.value);
    state.control->selectItemAtIndex(state.index);
    state.control->setStringValue(state.text);
  }
}

void restoreState(const Control& from, Control& to) {
  to.setState(from.state());
  to.setDoubleValue(from.doubleValue());
  to.selectItemAtIndex(from.indexOfSelectedItem());
  to.setStringValue(from.stringValue());
}

const PaneSetting* settingOfRow(const std::vector<PaneSetting>& settings, const NVKServerPrefs& pane,
                                const Setting& row) {
  const PaneSetting* found = nullptr;
  for (const PaneSetting& setting : settings) {
    if (!edits(pane, row, setting.controls().front())) continue;
    if (found == nullptr || showsValue(setting)) found = &setting;
  }
  return found;
}

const Setting* rowOfSetting(const NVKServerPrefs& pane, const PaneSetting& setting) {
  for (const Setting* row : storedRows()) {
    if (edits(pane, *row, setting.controls().front())) return row;
  }
  return nullptr;
}

bool isDefault(const PaneSetting& setting, const NVKServerPrefs& pane) {
  return std::ranges::none_of(setting.controls(),
                              [&](const Control* control) { return pane.differsFromDefault(*control); });
}

bool isFollowing(const NVKServerPrefs& pane, const Setting& row) {
  return row.followed && pane.new_user_imgDefs() == 1;
}

bool isLeftByLoads(const NVKServerPrefs& pane, const Setting& row) {
  return row.shown == Shown::elsewhere && !row.followed &&
         (pane.*row.controls[0]).kind() == ControlKind::slider;
}

int64_t storedValueOf(const NVKServerPrefs& pane, const PaneSetting& setting) {
  const Setting* row = rowOfSetting(pane, setting);
  const bool isHidden = row != nullptr && (row->followed || isLeftByLoads(pane, *row));
  return isHidden ? row->baseline(pane) : setting.value().value_or(kNoChoice);
}

}  // namespace norvik
