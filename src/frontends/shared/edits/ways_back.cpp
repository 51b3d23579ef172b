// The setting that shows a value names the way: the field rather than the box before it.
#include "src/frontends/shared/edits/ways_back.h"

#include <algorithm>

#include "src/frontends/shared/change/setting_rows.h"
#include "src/frontends/shared/edits/take_back_texts.h"

namespace norvik {

namespace {

bool isNamed(const std::vector<std::string>& names, const std::string& name) {
  return std::ranges::find(names, name) != names.end();
}

// What a person has changed of these settings: the last of them, as a field comes after its box. A value
// that differs though nobody edited it has a reason, and nothing to take back.
const SettingChange* editOf(const std::vector<const PaneSetting*>& together,
                            const std::vector<SettingChange>& pending) {
  const SettingChange* found = nullptr;
  for (const SettingChange& change : pending) {
    if (!change.because.empty()) continue;
    if (std::ranges::find(together, change.name, &PaneSetting::name) != together.end()) found = &change;
  }
  return found;
}

bool canBeEdited(const PaneSetting& setting) {
  return std::ranges::any_of(setting.controls(), [](const Control* control) { return control->isEnabled(); });
}

WayBack toDefault(const PaneSetting& shown, const std::vector<const PaneSetting*>& together,
                  const NVKServerPrefs& pane, const std::map<std::string, int64_t>& defaults) {
  WayBack way;
  const auto value = defaults.find(shown.name());
  way.words = value != defaults.end() ? sentence(take_back_texts::kToDefault, {shown.textOf(value->second)})
                                      : translated(take_back_texts::kToDefaultUnnamed);
  const bool isThere =
      std::ranges::all_of(together, [&](const PaneSetting* s) { return isDefault(*s, pane); });
  const bool mayEdit = std::ranges::any_of(together, [](const PaneSetting* s) { return canBeEdited(*s); });
  way.isOffered = !isThere && mayEdit && value != defaults.end();
  return way;
}

}  // namespace

std::vector<const PaneSetting*> editedTogether(const std::vector<PaneSetting>& settings,
                                               const NVKServerPrefs& pane,
                                               const std::vector<std::string>& names) {
  std::vector<const Setting*> rows;
  for (const PaneSetting& setting : settings) {
    if (isNamed(names, setting.name())) rows.push_back(rowOfSetting(pane, setting));
  }
  std::vector<const PaneSetting*> together;
  for (const PaneSetting& setting : settings) {
    const Setting* row = rowOfSetting(pane, setting);
    if (row != nullptr && std::ranges::find(rows, row) != rows.end()) together.push_back(&setting);
  }
  return together;
}

std::string buttonName(const std::vector<PaneSetting>& settings, const NVKServerPrefs& pane,
                       const std::vector<std::string>& names, const std::vector<SettingChange>& pending) {
  if (pending.empty()) return {};
  const SettingChange* edit = editOf(editedTogether(settings, pane, names), pending);
  return edit != nullptr ? sentence(take_back_texts::kButtonName, {edit->label, edit->from}) : std::string();
}

WaysBack waysBack(const std::vector<PaneSetting>& settings, const NVKServerPrefs& pane,
                  const std::vector<std::string>& names, const std::vector<SettingChange>& pending,
                  const std::map<std::string, int64_t>& defaults) {
  WaysBack ways;
  const auto together = editedTogether(settings, pane, names);
  if (together.empty()) return ways;
  const PaneSetting& shown = *together.back();
  const SettingChange* edit = editOf(together, pending);
  ways.stored = {sentence(take_back_texts::kToStored, {edit != nullptr ? edit->from : shown.text()}),
                 edit != nullptr};
  ways.standard = toDefault(shown, together, pane, defaults);
  return ways;
}

}  // namespace norvik
