// Remembers what the controls hold, as an edit that fails in the middle has made others already.
#include "src/frontends/shared/edits/pending_edits.h"

#include <algorithm>

#include "src/frontends/shared/change/setting_groups.h"
#include "src/frontends/shared/change/setting_rows.h"

namespace norvik {

namespace {

// Null where it holds the value already.
const PaneSetting* settingToChange(EditedPane& edited, const Edit& edit) {
  const PaneSetting* setting = edited.find(edit.name);
  if (setting == nullptr || setting->value().value_or(kNoChoice) == edit.value) return nullptr;
  return setting;
}

bool isLocked(EditedPane& edited, const PaneSetting& setting) {
  return setting.description().isAdministrators() && !edited.pane().authorized();
}

}  // namespace

ChangeError makePending(EditedPane& edited, const std::vector<Edit>& edits, std::vector<std::string>& notes) {
  NVKServerPrefs& pane = edited.pane();
  std::vector<std::vector<ControlState>> before;
  for (const Setting* row : storedRows()) before.push_back(controlStates(pane, *row));
  ChangeError error = applyEdits(edited, edits, BehindBoxes::edited, notes);
  if (error) std::ranges::for_each(before, restoreControls);
  pane.onStateTimer();
  return error;
}

std::vector<Edit> defaultsOf(const std::vector<const PaneSetting*>& settings,
                             const std::map<std::string, int64_t>& defaults) {
  std::vector<Edit> edits;
  for (const PaneSetting* setting : settings) {
    const auto value = defaults.find(setting->name());
    if (value != defaults.end()) edits.push_back({setting->name(), value->second, ""});
  }
  return edits;
}

std::vector<Edit> defaultsOf(Platform& computer, const InterfaceDescription& interface,
                             const std::vector<std::string>& names) {
  std::vector<Edit> edits = wishOf(computer, interface, ProfileSettings(), Unnamed::toDefaults).edits;
  std::erase_if(edits, [&](const Edit& edit) { return std::ranges::find(names, edit.name) == names.end(); });
  return edits;
}

std::vector<Edit> pendingEdits(EditedPane& edited, const std::vector<SettingChange>& pending) {
  std::vector<Edit> edits;
  for (const SettingChange& change : pending) {
    const PaneSetting* setting = edited.find(change.name);
    if (setting != nullptr) edits.push_back({change.name, setting->value().value_or(kNoChoice), ""});
  }
  return edits;
}

std::vector<Edit> possibleNow(EditedPane& edited, const std::vector<Edit>& edits) {
  std::vector<Edit> possible;
  for (const Edit& edit : edits) {
    const PaneSetting* setting = settingToChange(edited, edit);
    if (setting != nullptr && !isLocked(edited, *setting)) possible.push_back(edit);
  }
  return possible;
}

std::vector<SettingChange> changesBy(EditedPane& edited, const InterfaceDescription& interface,
                                     const std::vector<Edit>& edits) {
  std::vector<SettingChange> changes;
  for (const Edit& edit : edits) {
    const PaneSetting* setting = settingToChange(edited, edit);
    if (setting == nullptr) continue;
    const SettingDescription& description = setting->description();
    changes.push_back({setting->name(), labelOf(description, interface), description.page.title,
                       description.first().outlet, setting->text(), setting->textOf(edit.value),
                       setting->typedValue(), setting->typedValueOf(edit.value), edit.because});
  }
  return changes;
}

bool needsLock(EditedPane& edited, const std::vector<Edit>& edits) {
  return std::ranges::any_of(edits, [&](const Edit& edit) {
    const PaneSetting* setting = settingToChange(edited, edit);
    return setting != nullptr && isLocked(edited, *setting);
  });
}

}  // namespace norvik
