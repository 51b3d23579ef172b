// Looking, checking, others' changes, and what is pending. Applying is in settings_change_apply.cpp.
#include "src/frontends/shared/change/settings_change.h"

#include <algorithm>

#include "src/frontends/shared/change/settings_change_state.h"
#include "src/frontends/shared/checks/value_check.h"
#include "src/server/mac/stores/settings_paths.h"

namespace norvik {

namespace {

// The name by which the open files limit, which is no setting of the description, is called.
constexpr const char* kLimitName = "open files limit";
constexpr const char* kDiffersFromStart = "the file holds another value";

std::string labelOf(const SettingDescription& description, const InterfaceDescription& interface) {
  const ControlDescription& first = description.first();
  const ControlDescription* box = description.isChoice() ? interface.find(first.requiresOutlet) : nullptr;
  return box != nullptr ? box->label : first.label;
}

bool sameLimit(const NVKServerLimit& one, const NVKServerLimit& other) {
  return one.soft == other.soft && one.hard == other.hard;
}

std::string limitText(const NVKServerLimit& limit) {
  if (limit.soft <= 0) return "default";
  return std::to_string(limit.soft) + " and " + std::to_string(limit.hard);
}

// A user who follows the server's image settings has none pending of their own.
bool isFollowing(const NVKServerPrefs& pane, const Setting& row) {
  return row.followed && pane.new_user_imgDefs() == 1;
}

}  // namespace

void SettingsChange::State::rememberStored(NVKServerPrefs& shown) {
  const auto shownSettings = paneSettings(interface, shown);
  stored.clear();
  for (const PaneSetting& setting : shownSettings) {
    StoredValue value{setting.text(), setting.typedValue()};
    const Setting* row = rowOfSetting(shown, setting);
    // A load leaves one slider where it is, so the field tells more than the control.
    const bool isSlider = setting.description().first().kind == ControlKind::slider;
    if (row != nullptr && isSlider && !isFollowing(shown, *row)) {
      value = {setting.textOf(row->baseline(shown)), row->baseline(shown)};
    }
    stored.insert_or_assign(setting.name(), std::move(value));
  }
  for (const ControlDescription* field : shownFields) {
    const std::string& text = shown.outlet(field->outlet)->stringValue();
    stored.insert_or_assign(field->label, StoredValue{text, text});
  }
}

bool SettingsChange::State::isEdited(const Setting& row) const {
  if (isFollowing(pane, row) || !row.differs(pane)) return false;
  const auto known = unedited.find(&row);
  return known == unedited.end() || known->second != row.pendingValue(pane);
}

Edits SettingsChange::State::edits(const std::set<const Setting*>& excluded, bool withLimit) const {
  Edits result;
  for (const Setting* row : storedRows()) {
    if (isEdited(*row) && !excluded.contains(row)) result.rows.emplace(row, controlStates(pane, *row));
  }
  if (withLimit && pane.maxFilesChanged()) result.limit = pane.m_admin_maxFiles.launchd;
  return result;
}

Expected SettingsChange::State::expected() const {
  Expected result;
  for (const Setting* row : storedRows()) {
    if (isPending(pane, *row)) result.rows.emplace(row, row->pendingValue(pane));
  }
  if (pane.authorized() && pane.maxFilesChanged()) result.limit = pane.m_admin_maxFiles.launchd;
  return result;
}

void SettingsChange::State::reload(const Edits& kept, const std::set<const Setting*>& takenBack) {
  pane.loadMaxFiles();
  pane.loadAdminConfig();
  pane.loadUserConfig();
  pane.loadNotificationSettings();
  for (const Setting* row : takenBack) {
    Control& control = pane.*row->controls[0];
    if (control.kind() != ControlKind::slider || isFollowing(pane, *row)) continue;
    control.setIntegerValue(row->baseline(pane));
  }
  rememberStored(pane);
  unedited.clear();
  for (const Setting* row : storedRows()) {
    if (row->differs(pane)) unedited.emplace(row, row->pendingValue(pane));
  }
  for (const auto& [row, states] : kept.rows) restoreControls(states);
  if (kept.limit && pane.authorized()) {
    pane.m_admin_maxFiles.launchd = *kept.limit;
    pane.m_admin_maxFiles.action = kLimitRevert;
    pane.displayMaxFiles();
  }
  // The user's image controls show the server's pending values while they follow them.
  if (pane.new_user_imgDefs() == 1) pane.buttonClicked(pane.ib_user_chkbox_imgDefs);
  pane.updateGui(false, false);
}

SettingChange SettingsChange::State::changeOf(const PaneSetting& setting) const {
  const SettingDescription& description = setting.description();
  SettingChange change{.name = setting.name(),
                       .label = labelOf(description, interface),
                       .page = description.page.title,
                       .outlet = description.first().outlet,
                       .from = setting.text(),
                       .to = setting.text(),
                       .oldValue = setting.typedValue(),
                       .newValue = setting.typedValue(),
                       .because = ""};
  if (const auto known = stored.find(setting.name()); known != stored.end()) {
    change.from = known->second.text;
    change.oldValue = known->second.value;
  }
  return change;
}

bool SettingsChange::State::takeLock() {
  if (lock == nullptr) lock = services.locks.lock(options.lockLimit);
  return lock != nullptr;
}

void SettingsChange::State::giveLock() {
  if (!lockIsCallers) lock.reset();
}

SettingsChange::SettingsChange(NVKServerPrefs& pane, RecordingPlatform& recording, Platform& computer,
                               const InterfaceDescription& interface, ComputerServices services,
                               ChangeOptions options)
    : state_(new State{pane, recording, computer, interface, services, std::move(options)}) {
  for (const ControlDescription* control : interface.controls()) {
    if (control->displayOnly) state_->shownFields.push_back(control);
  }
}

SettingsChange::~SettingsChange() = default;

void SettingsChange::look() {
  state_->files = inspectFiles(state_->computer, state_->services.files);
  findings_ =
      findingsOf(state_->files, state_->computer, state_->services.files, state_->interface, state_->pane);
}

void SettingsChange::loaded() {
  State& state = *state_;
  state.settings = paneSettings(state.interface, state.pane);
  state.rememberStored(state.pane);
  state.unedited.clear();
  for (const Setting* row : storedRows()) {
    if (row->differs(state.pane)) state.unedited.emplace(row, row->pendingValue(state.pane));
  }
}

ForeignChanges SettingsChange::foreignChanges() {
  State& state = *state_;
  ForeignChanges foreign;
  const FileStates now = inspectFiles(state.computer, state.services.files);
  foreign.filesChanged = !std::ranges::equal(
      now, state.files, [](const FileState& one, const FileState& other) { return one.holdsSameAs(other); });
  if (!foreign.filesChanged) return foreign;
  ShadowPane shadow = state.shadow();
  NVKServerPrefs& theirs = shadow.pane();
  const auto theirSettings = paneSettings(state.interface, theirs);
  for (const Setting* row : storedRows()) {
    const int64_t value = row->baseline(theirs);
    const PaneSetting* setting = settingOfRow(state.settings, state.pane, *row);
    if (value == row->baseline(state.pane) || setting == nullptr) continue;
    const PaneSetting* their = settingOfRow(theirSettings, theirs, *row);
    SettingChange change = state.changeOf(*setting);
    const bool edited = state.isEdited(*row);
    if (edited && value == row->pendingValue(state.pane)) continue;
    if (edited) {
      foreign.collisions.push_back(
          {change.name, change.label, change.page, change.from, their->text(), setting->text()});
      continue;
    }
    change.to = their->text();
    change.newValue = their->typedValue();
    foreign.takenOver.push_back(std::move(change));
  }
  const NVKServerLimit& limit = theirs.m_admin_maxFiles.launchd;
  const NVKServerLimits& ours = state.pane.m_admin_maxFiles;
  if (!sameLimit(limit, ours.backup) && state.pane.maxFilesChanged() && !sameLimit(limit, ours.launchd)) {
    foreign.collisions.push_back({kLimitName, "Open Files Limit", "", limitText(ours.backup),
                                  limitText(limit), limitText(ours.launchd)});
  }
  return foreign;
}

void SettingsChange::takeOver(const std::vector<std::string>& theirs) {
  State& state = *state_;
  std::set<const Setting*> excluded;
  for (const PaneSetting& setting : state.settings) {
    if (std::ranges::count(theirs, setting.name()) == 0) continue;
    if (const Setting* row = rowOfSetting(state.pane, setting)) excluded.insert(row);
  }
  const bool withLimit = std::ranges::count(theirs, kLimitName) == 0;
  const Edits kept = state.edits(excluded, withLimit);
  look();
  state.reload(kept, excluded);
}

std::vector<ValueFinding> SettingsChange::check() {
  State& state = *state_;
  const NVKServerPrefs& pane = state.pane;
  std::vector<ValueFinding> findings;
  if (!pane.authorized()) return findings;
  for (const Control* field : portFields(pane)) {
    const auto isOfField = [&](const PaneSetting& setting) { return setting.controls().front() == field; };
    const auto setting = std::ranges::find_if(state.settings, isOfField);
    if (setting == state.settings.end()) continue;
    const Setting* row = rowOfSetting(pane, *setting);
    const bool touched = setting->text() != state.stored[setting->name()].text;
    if (!touched && !(row != nullptr && isPending(pane, *row))) continue;
    const auto finding = checkPort(pane, state.interface, *field, state.options.portInUse);
    if (!finding) continue;
    findings.push_back({setting->name(), std::string(field->name()), finding->sentence, finding->blocks});
  }
  std::ranges::stable_sort(findings, {}, [](const ValueFinding& finding) { return !finding.blocks; });
  return findings;
}

std::vector<SettingChange> SettingsChange::pending() {
  State& state = *state_;
  std::vector<SettingChange> changes;
  std::set<const Setting*> shown;
  for (const PaneSetting& setting : state.settings) {
    const Setting* row = rowOfSetting(state.pane, setting);
    if (row == nullptr || !isPending(state.pane, *row)) continue;
    SettingChange change = state.changeOf(setting);
    const bool isLast = settingOfRow(state.settings, state.pane, *row) == &setting;
    if (change.from == change.to && !(isLast && !shown.contains(row))) continue;
    if (!state.isEdited(*row)) change.because = kDiffersFromStart;
    shown.insert(row);
    changes.push_back(std::move(change));
  }
  if (!state.pane.authorized() || !state.pane.maxFilesChanged()) return changes;
  for (const ControlDescription* field : state.shownFields) {
    const std::string& text = state.pane.outlet(field->outlet)->stringValue();
    changes.push_back({field->label, field->label, "", field->outlet, state.stored[field->label].text, text,
                       state.stored[field->label].value, text, ""});
  }
  return changes;
}

void SettingsChange::takeBack(const std::string& setting) {
  const bool isLimit = std::ranges::any_of(
      state_->shownFields, [&](const ControlDescription* field) { return field->label == setting; });
  takeOver({isLimit ? kLimitName : setting});
}

void SettingsChange::takeBackAll() {
  std::vector<std::string> all = {kLimitName};
  for (const PaneSetting& setting : state_->settings) all.push_back(setting.name());
  takeOver(all);
}

bool SettingsChange::holdLock() {
  state_->lockIsCallers = state_->takeLock();
  return state_->lockIsCallers;
}

void SettingsChange::releaseLock() {
  state_->lockIsCallers = false;
  state_->lock.reset();
}

bool SettingsChange::State::wouldSave(const StoredFile& file) const {
  switch (file.group) {
    case Group::user:
      return pane.userConfigChanged();
    case Group::limit:
      return pane.authorized() && pane.maxFilesChanged();
    case Group::notifications:
      return pane.notificationSettingsChanged();
    case Group::server:
      break;
  }
  if (!file.byTool) return pane.adminConfigChanged();
  const bool isScreenSaver = std::string_view(file.path) == kScreenSaverFile;
  const Control& box = isScreenSaver ? pane.ib_admin_chkbox_scrSaver : pane.ib_admin_chkbox_noQuartz;
  return pane.differsFromStored(box);
}

}  // namespace norvik
