// Looking, checking, others' changes, what is pending, and taking it back. Applying is in
// settings_change_apply.cpp.
#include "src/frontends/shared/change/settings_change.h"

#include <algorithm>

#include "src/frontends/shared/change/settings_change_state.h"
#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/language/language.h"
#include "src/server/mac/control/tool_commands.h"
#include "src/server/mac/stores/line_file.h"
#include "src/server/mac/text/utf8.h"

namespace norvik {

namespace {

constexpr const char* kCannotBeShown = english("the file holds a value that the control cannot show");

// A front end may leave these out.
ChangeOptions complete(ChangeOptions options, LaunchedTools& tools) {
  if (!options.portInUse) options.portInUse = [](int64_t) { return false; };
  if (!options.waitForTools) {
    options.waitForTools = [&tools](std::chrono::milliseconds limit) { return tools.wait(limit); };
  }
  return options;
}

// The save writes such a line anew, so nothing of it is cut.
bool isReplaced(const std::string& line, const NVKServerLimit& limit) {
  const auto pieces = piecesOf(line);
  return limit.soft > 0 && !pieces.empty() && (pieces[0] == "limit" || pieces[0] == "#limit");
}

// What the save keeps of a line: as many bytes as it has UTF-16 units.
std::string_view keptOf(const std::string& line) {
  return std::string_view(line).substr(0, utf16Length(line));
}

// The save of a limit cuts lines that are not plain ASCII. One that it cuts within a character would make
// the whole file unreadable for the next load.
void addLimitFindings(NVKServerPrefs& pane, std::vector<ValueFinding>& findings) {
  const StringsArray lines = pane.loadStringsArray(kLaunchdConfigFile).value_or(StringsArray());
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string_view kept = keptOf(lines[i]);
    if (kept.size() == lines[i].size() || isReplaced(lines[i], pane.m_admin_maxFiles.launchd)) continue;
    const bool blocks = !isUtf8(kept);
    findings.push_back(
        {.setting = kOpenFilesLimitName,
         .outlet = std::string(pane.ib_admin_button_maxFAdjust.name()),
         .sentence = sentence(
             blocks ? english("Saving the open files limit cuts line {1} of {2} short, as it is not plain "
                              "ASCII; the file could not be read any more. Write that line in plain "
                              "ASCII first.")
                    : english("Saving the open files limit cuts line {1} of {2} short, as it is not plain "
                              "ASCII."),
             {std::to_string(i + 1), kLaunchdConfigFile}),
         .blocks = blocks,
         .code = FailureCode::notSettable});
  }
}

}  // namespace

SettingsChange::SettingsChange(NVKServerPrefs& pane, RecordingPlatform& recording, Platform& computer,
                               const InterfaceDescription& interface, ComputerServices services,
                               ChangeOptions options)
    : state_(new State{pane, recording, computer, interface, services,
                       complete(std::move(options), services.tools)}) {
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
  state_->settings = paneSettings(state_->interface, state_->pane);
  state_->rememberStored(state_->pane);
  state_->rememberRows();
}

ForeignChanges SettingsChange::foreignChanges() {
  State& state = *state_;
  ForeignChanges foreign;
  FileStates now = inspectFiles(state.computer, state.services.files);
  foreign.filesChanged = !holdSame(now, state.files);
  if (!foreign.filesChanged) return foreign;
  {
    // What is readable is asked of the files of now.
    std::swap(now, state.files);
    ShadowPane shadow = state.shadow();
    state.addForeignRows(shadow.pane(), foreign);
    state.addForeignLimit(shadow.pane(), foreign);
    std::swap(now, state.files);
  }
  state.refresh();
  return foreign;
}

void SettingsChange::takeOver(const std::vector<std::string>& theirs) {
  const Rows dropped = state_->rowsNamed(theirs);
  const bool withLimit = std::ranges::count(theirs, kOpenFilesLimitName) == 0;
  const Edits kept = state_->edits(dropped, withLimit);
  const FileStates before = state_->files;
  look();
  state_->reload(kept, dropped, before);
}

std::vector<ValueFinding> SettingsChange::check() {
  State& state = *state_;
  NVKServerPrefs& pane = state.pane;
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
  if (pane.maxFilesChanged()) addLimitFindings(pane, findings);
  std::ranges::stable_sort(findings, {}, [](const ValueFinding& finding) { return !finding.blocks; });
  return findings;
}

std::vector<SettingChange> SettingsChange::pending() {
  State& state = *state_;
  std::vector<SettingChange> changes;
  Rows shown;
  for (const PaneSetting& setting : state.settings) {
    const Setting* row = rowOfSetting(state.pane, setting);
    if (row == nullptr || !isPending(state.pane, *row)) continue;
    SettingChange change = state.changeOf(setting);
    const bool isLast = settingOfRow(state.settings, state.pane, *row) == &setting;
    if (change.from == change.to && !(isLast && !shown.contains(row))) continue;
    if (!state.isEdited(*row)) change.because = translated(kCannotBeShown);
    shown.insert(row);
    changes.push_back(std::move(change));
  }
  if (!wouldSave(state.pane, Group::limit)) return changes;
  for (const ControlDescription* field : state.shownFields) {
    const bool isSoft = field->outlet == state.pane.ib_admin_edbox_maxFSoft.name();
    const NVKServerLimit stored = wholeLimit(state.pane.m_admin_maxFiles.backup);
    const std::string from = limitPart(isSoft ? stored.soft : stored.hard);
    const std::string& to = state.pane.outlet(field->outlet)->stringValue();
    changes.push_back({field->label, field->label, pageOf(state.interface, field->outlet), field->outlet,
                       from, to, from, to, ""});
  }
  return changes;
}

void SettingsChange::takeBack(const std::string& setting) {
  const bool isLimit = setting == kOpenFilesLimitName ||
                       std::ranges::count(state_->shownFields, setting,
                                          [](const ControlDescription* field) { return field->label; }) > 0;
  state_->takeBack(state_->rowsNamed({setting}), isLimit);
}

void SettingsChange::takeBackAll() {
  state_->takeBack(Rows(storedRows().begin(), storedRows().end()), true);
}

AuthorizationRefusal SettingsChange::refusal() const {
  return state_->services.refusals.lastRefusal();
}

bool SettingsChange::holdLock() {
  state_->lockIsCallers = state_->takeLock();
  return state_->lockIsCallers;
}

void SettingsChange::releaseLock() {
  state_->lockIsCallers = false;
  state_->lock.reset();
}

}  // namespace norvik
