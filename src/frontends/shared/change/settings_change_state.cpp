// What a load left, what a person did to it, and how the one is renewed without losing the other.
#include "src/frontends/shared/change/settings_change_state.h"

#include <algorithm>

#include "src/server/mac/control/tool_commands.h"
#include "src/server/mac/stores/settings_paths.h"

namespace norvik {

namespace {

std::map<const Setting*, int64_t> fieldsOf(const NVKServerPrefs& pane) {
  std::map<const Setting*, int64_t> fields;
  for (const Setting* row : storedRows()) fields.emplace(row, row->baseline(pane));
  return fields;
}

const FileState* stateAt(const FileStates& files, std::string_view path) {
  const auto found =
      std::ranges::find_if(files, [&](const FileState& file) { return path == file.file.path; });
  return found != files.end() ? &*found : nullptr;
}

bool isSame(const FileContent& one, const FileContent& other) {
  return one.kind == other.kind && one.bytes == other.bytes;
}

}  // namespace

std::string pageOf(const InterfaceDescription& interface, std::string_view outlet) {
  for (const TabDescription& tab : interface.tabs) {
    for (const SectionDescription& section : tab.sections) {
      for (const RowDescription& row : section.rows) {
        if (std::ranges::count(row.controls, outlet, &ControlDescription::outlet) > 0)
          return pageName(tab).title;
      }
    }
  }
  return "";
}

void SettingsChange::State::refresh() {
  if (!pane.isServerChanging()) pane.updateGui(false, false);
}

bool SettingsChange::State::isReadable(const FileState& file) const {
  const auto left = torn.find(file.path);
  return file.damage.empty() && (left == torn.end() || !isSame(left->second, file.content));
}

const FileState& SettingsChange::State::fileOf(const Setting& row) const {
  return *stateAt(files, fileOfRow(row).path);
}

StoredValue SettingsChange::State::storedIn(NVKServerPrefs& shown, const PaneSetting& setting) const {
  const Setting* row = rowOfSetting(shown, setting);
  if (row == nullptr || !(row->followed || isLeftByLoads(shown, *row)))
    return {setting.text(), setting.typedValue()};
  // The field tells more than the control, which shows the server's value or what it showed before.
  const int64_t value = row->baseline(shown);
  const std::string text = setting.textOf(value);
  const bool isSlider = setting.description().first().kind == ControlKind::slider;
  return {text, isSlider ? SettingValue(value) : SettingValue(text)};
}

void SettingsChange::State::rememberStored(NVKServerPrefs& shown) {
  stored.clear();
  for (const PaneSetting& setting : paneSettings(interface, shown)) {
    stored.insert_or_assign(setting.name(), storedIn(shown, setting));
  }
}

void SettingsChange::State::rememberRow(const Setting& row) {
  LoadedRow& known = loaded[&row];
  known.controls = controlStates(pane, row);
  known.field = row.baseline(pane);
  known.value = isFollowing(pane, row) ? row.baseline(pane) : row.pendingValue(pane);
}

void SettingsChange::State::rememberRows() {
  for (const Setting* row : storedRows()) rememberRow(*row);
}

void SettingsChange::State::rememberSaved() {
  for (const Setting* row : storedRows()) {
    if (!isEdited(*row)) rememberRow(*row);
  }
}

bool SettingsChange::State::isEdited(const Setting& row) const {
  if (isFollowing(pane, row) || !row.differs(pane)) return false;
  const auto known = loaded.find(&row);
  return known == loaded.end() || known->second.value != row.pendingValue(pane);
}

Edits SettingsChange::State::edits(const Rows& excluded, bool withLimit) const {
  Edits result;
  for (const Setting* row : storedRows()) {
    if (excluded.contains(row) || isFollowing(pane, *row)) continue;
    RowEdit edit{controlStates(pane, *row), isEdited(*row)};
    const auto known = loaded.find(row);
    const bool isTouched = known != loaded.end() && known->second.controls != edit.controls;
    if (edit.counts || isTouched) result.rows.emplace(row, std::move(edit));
  }
  // Own image values mean something only to a user who does not follow.
  const bool hasOwn = std::ranges::any_of(
      result.rows, [](const auto& entry) { return entry.first->followed && entry.second.counts; });
  for (const Setting& row : userSettings()) {
    const bool decides = row.controls[0] == &NVKServerPrefs::ib_user_chkbox_imgDefs;
    if (hasOwn && decides && !excluded.contains(&row)) result.rows[&row] = {controlStates(pane, row), true};
  }
  if (withLimit && pane.maxFilesChanged()) result.limit = pane.m_admin_maxFiles.launchd;
  return result;
}

Rows SettingsChange::State::rowsNamed(const std::vector<std::string>& names) const {
  Rows rows;
  for (const PaneSetting& setting : settings) {
    if (std::ranges::count(names, setting.name()) == 0) continue;
    if (const Setting* row = rowOfSetting(pane, setting)) rows.insert(row);
  }
  return rows;
}

// A load of the limit runs tools, so it is left out where the file is the same.
void SettingsChange::State::load(const FileStates& before) {
  const FileState* limit = stateAt(files, kLaunchdConfigFile);
  const FileState* earlier = stateAt(before, kLaunchdConfigFile);
  if (isReadable(*limit) && (earlier == nullptr || !limit->holdsSameAs(*earlier))) pane.loadMaxFiles();
  loadServer();
  if (isReadable(*stateAt(files, kAgentFile))) pane.loadUserConfig();
  if (isReadable(*stateAt(files, kMenuAgentFile))) pane.loadNotificationSettings();
}

// Loads three files at once. What cannot be read stays as it was known.
void SettingsChange::State::loadServer() {
  const auto fields = fieldsOf(pane);
  const auto whole = pane.m_admin_Config;
  pane.loadAdminConfig();
  if (!isReadable(*stateAt(files, kServerConfigFile))) pane.m_admin_Config = whole;
  for (const Setting& row : serverSettings()) {
    if (isReadable(fileOf(row))) continue;
    row.setBaseline(pane, fields.at(&row));
    if (const auto known = loaded.find(&row); known != loaded.end()) restoreControls(known->second.controls);
  }
}

void SettingsChange::State::reload(const Edits& kept, const Rows& dropped, const FileStates& before) {
  if (pane.authorized() && pane.maxFilesChanged()) pane.changeMaxFiles();
  const auto earlier = loaded;
  const auto isNew = [&](const Setting& row) {
    const auto known = earlier.find(&row);
    return known == earlier.end() || known->second.field != row.baseline(pane);
  };
  for (const auto& [row, known] : earlier) {
    restoreControls(known.controls);
    // A save that nobody can read back is not known to have succeeded.
    if (!isReadable(fileOf(*row))) row->setBaseline(pane, known.field);
  }
  load(before);
  for (const Setting* row : storedRows()) {
    if (!isLeftByLoads(pane, *row) || !(isNew(*row) || dropped.contains(row))) continue;
    (pane.*row->controls[0]).setIntegerValue(row->baseline(pane));
  }
  rememberStored(pane);
  rememberRows();
  Edits edits = kept;
  std::erase_if(edits.rows, [&](const auto& entry) { return !entry.second.counts && isNew(*entry.first); });
  putBack(edits);
}

void SettingsChange::State::putBack(const Edits& kept) {
  for (const auto& [row, edit] : kept.rows) restoreControls(edit.controls);
  NVKServerLimits& limits = pane.m_admin_maxFiles;
  if (kept.limit && pane.authorized() && !sameLimit(*kept.limit, wholeLimit(limits.backup))) {
    limits.launchd = *kept.limit;
    limits.action = kLimitRevert;
    pane.displayMaxFiles();
  }
  followAndRefresh();
}

void SettingsChange::State::takeBack(const Rows& rows, bool withLimit) {
  Rows all = rows;
  for (const Setting* row : rows) {
    if (row->controls[0] != &NVKServerPrefs::ib_user_chkbox_imgDefs) continue;
    for (const Setting& follower : userSettings()) {
      if (follower.followed) all.insert(&follower);
    }
  }
  for (const Setting* row : all) {
    if (row->followed || isLeftByLoads(pane, *row)) {
      (pane.*row->controls[0]).setIntegerValue(row->baseline(pane));
    } else if (const auto known = loaded.find(row); known != loaded.end()) {
      restoreControls(known->second.controls);
    }
  }
  if (withLimit && pane.maxFilesChanged()) pane.changeMaxFiles();
  followAndRefresh();
}

void SettingsChange::State::followAndRefresh() {
  if (pane.new_user_imgDefs() == 1) pane.buttonClicked(pane.ib_user_chkbox_imgDefs);
  refresh();
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

std::string SettingsChange::State::meaningIn(NVKServerPrefs& shown, const PaneSetting& setting) const {
  const Control* box = shown.outlet(setting.description().first().requiresOutlet);
  return setting.description().isChoice() && box != nullptr && !box->isOn() ? "none" : setting.text();
}

void SettingsChange::State::addForeignRows(NVKServerPrefs& theirs, ForeignChanges& foreign) const {
  const auto theirSettings = paneSettings(interface, theirs);
  const Edits own = edits({}, false);
  for (const Setting* row : storedRows()) {
    const int64_t value = row->baseline(theirs);
    const PaneSetting* setting = settingOfRow(settings, pane, *row);
    const PaneSetting* their = settingOfRow(theirSettings, theirs, *row);
    if (value == row->baseline(pane) || setting == nullptr || their == nullptr) continue;
    if (isFollowing(pane, *row) && isFollowing(theirs, *row)) continue;
    if (const auto late = awaited.rows.find(row); late != awaited.rows.end() && late->second == value)
      continue;
    const auto edit = own.rows.find(row);
    const bool isEdit = edit != own.rows.end() && edit->second.counts;
    if (isEdit && value == row->pendingValue(pane)) continue;
    SettingChange change = changeOf(*setting);
    const StoredValue found = storedIn(theirs, *their);
    if (isEdit) {
      const bool isChoice = setting->description().isChoice();
      foreign.collisions.push_back({change.name, change.label, change.page, change.from,
                                    isChoice ? meaningIn(theirs, *their) : found.text,
                                    meaningIn(pane, *setting)});
      continue;
    }
    change.to = found.text;
    change.newValue = found.value;
    foreign.takenOver.push_back(std::move(change));
  }
}

void SettingsChange::State::addForeignLimit(const NVKServerPrefs& theirs, ForeignChanges& foreign) const {
  const NVKServerLimit limit = wholeLimit(theirs.m_admin_maxFiles.launchd);
  const NVKServerLimits& ours = pane.m_admin_maxFiles;
  const NVKServerLimit loadedLimit = wholeLimit(ours.backup);
  if (sameLimit(limit, loadedLimit) || (awaited.limit && sameLimit(limit, *awaited.limit))) return;
  const bool isStaged = pane.authorized() && pane.maxFilesChanged();
  if (isStaged && sameLimit(limit, ours.launchd)) return;
  const std::string outlet(pane.ib_admin_edbox_maxFSoft.name());
  const std::string page = pageOf(interface, outlet);
  const std::string from = limitText(loadedLimit);
  const std::string to = limitText(limit);
  if (isStaged) {
    foreign.collisions.push_back(
        {kOpenFilesLimitName, translated(kOpenFilesLimitLabel), page, from, to, limitText(ours.launchd)});
  } else {
    foreign.takenOver.push_back(
        {kOpenFilesLimitName, translated(kOpenFilesLimitLabel), page, outlet, from, to, from, to, ""});
  }
}

bool SettingsChange::State::differsFrom(const NVKServerPrefs& fresh) const {
  const auto isUnlike = [&](const char* path, const auto& mine, const auto& found) {
    return isReadable(*stateAt(files, path)) && mine != found;
  };
  if (isUnlike(kServerConfigFile, pane.m_admin_Config, fresh.m_admin_Config)) return true;
  if (isUnlike(kAgentFile, pane.m_user_Config, fresh.m_user_Config)) return true;
  if (isUnlike(kMenuAgentFile, pane.m_admin_Ntf_Config, fresh.m_admin_Ntf_Config)) return true;
  if (isReadable(*stateAt(files, kLaunchdConfigFile)) &&
      !sameLimit(wholeLimit(pane.m_admin_maxFiles.backup), wholeLimit(fresh.m_admin_maxFiles.launchd)))
    return true;
  return std::ranges::any_of(storedRows(), [&](const Setting* row) {
    return isReadable(fileOf(*row)) && row->baseline(pane) != row->baseline(fresh);
  });
}

bool SettingsChange::State::takeLock() {
  if (lock == nullptr) lock = services.locks.lock(options.lockLimit);
  return lock != nullptr;
}

void SettingsChange::State::giveLock() {
  if (!lockIsCallers) lock.reset();
}

}  // namespace norvik
