// Applying: the lock, others' changes, damaged files, the pane's own sequence, its tools, reading back.
#include <algorithm>

#include "src/adapters/property_lists/codec.h"
#include "src/frontends/shared/change/settings_change.h"
#include "src/frontends/shared/change/settings_change_state.h"
#include "src/frontends/shared/change/tool_results.h"
#include "src/frontends/shared/checks/value_check.h"
#include "src/server/mac/control/tool_commands.h"
#include "src/server/mac/platform/open_file.h"
#include "src/server/mac/stores/settings_paths.h"

namespace norvik {

namespace {

// A group of settings that Apply saves: its name, and the pane's own test whether it would.
struct GroupRow {
  Group group;
  const char* name;
  bool (NVKServerPrefs::*changed)() const;
};
constexpr GroupRow kGroups[] = {
    {Group::user, "user settings", &NVKServerPrefs::userConfigChanged},
    {Group::server, "server settings", &NVKServerPrefs::adminConfigChanged},
    {Group::limit, "open files limit", &NVKServerPrefs::maxFilesChanged},
    {Group::notifications, "notification settings", &NVKServerPrefs::notificationSettingsChanged},
};

std::vector<std::string> changedGroups(const NVKServerPrefs& pane) {
  std::vector<std::string> names;
  for (const GroupRow& row : kGroups) {
    if ((pane.*row.changed)()) names.emplace_back(row.name);
  }
  return names;
}

bool isApply(const Launch& launch) {
  return launch.tool == PROC_NVKSVC &&
         launch.arguments == std::vector<std::string>{kApplyConfig.arguments[0]};
}

// Whom a save tells about itself.
void addTold(const Effects& effects, bool applySucceeded, bool posted, ChangeReport& report) {
  const bool applies = std::ranges::any_of(effects.launches, isApply);
  if (applies) (applySucceeded ? report.told : report.notTold).emplace_back("the server");
  for (const int32_t pid : effects.signalled)
    report.told.push_back("the agent, process " + std::to_string(pid));
  for (const int32_t pid : effects.notSignalled) {
    report.notTold.push_back("the agent, process " + std::to_string(pid));
  }
  if (!effects.posted.empty()) (posted ? report.told : report.notTold).emplace_back("the menu agent");
}

ChangeError unwritten(const UnwrittenFile& file) {
  return {FailureCode::notWritten,
          "the file " + file.path + " could not be written" +
              (file.reason.empty() ? "" : ": " + file.reason) + ".",
          "", "", ""};
}

ChangeError lockIsTaken() {
  return {FailureCode::tryAgain, "another program is changing the settings; nothing was changed.", "", "",
          "Try again in a moment."};
}

std::string namesOf(const std::vector<Collision>& collisions) {
  std::vector<std::string> names;
  for (const Collision& collision : collisions) names.push_back(collision.name);
  return listInWords(names, "and");
}

}  // namespace

// What apply, restore and a call around the pane's own applying have in common.
class SettingsChange::Applying {
 public:
  Applying(SettingsChange& change, ChangeReport& report)
      : change_(change), state_(*change.state_), report_(report) {}

  // Each returns false, with the reason in the report, where it must not go on.
  bool checked();
  bool locked();
  bool agreedWithOthers(ChangeDecisions& person);
  bool damagedDecided(ChangeDecisions& person);

  void prepareUnasked();
  void putBack();
  void begin();
  void readBack();
  void keepCopies();
  bool installCopy(const FileFinding& file, const KeptCopy& copy);
  bool setAside(const FileState& file);
  void waitForTools();

 private:
  void keepOthers();
  void holdBack();
  void refuseDamaged(bool hasLock);
  bool decide(const FileState& file, ChangeDecisions& person);
  void addMissing(NVKServerPrefs& found);
  void addSaved();
  bool fail(ChangeError error) {
    report_.error = std::move(error);
    return false;
  }

  SettingsChange& change_;
  State& state_;
  ChangeReport& report_;
  Expected expected_;
  Edits before_;
  Edits held_;             // edits that must not be saved, for as long as the pane applies
  ChangeError heldError_;  // and why
  std::vector<std::string> groups_;
};

bool SettingsChange::Applying::checked() {
  report_.warnings.clear();
  for (const ValueFinding& finding : change_.check()) {
    if (finding.blocks) {
      return fail({FailureCode::wrongValue, finding.sentence, finding.setting, finding.outlet, ""});
    }
    report_.warnings.push_back(finding.sentence);
  }
  return true;
}

bool SettingsChange::Applying::locked() {
  return state_.takeLock() || fail(lockIsTaken());
}

bool SettingsChange::Applying::agreedWithOthers(ChangeDecisions& person) {
  const ForeignChanges foreign = change_.foreignChanges();
  if (!foreign.any()) return true;
  std::vector<std::string> theirs;
  if (!foreign.collisions.empty()) {
    const auto sides = person.resolve(foreign.collisions);
    if (!sides || sides->size() != foreign.collisions.size()) {
      return fail({FailureCode::cancelled, "nothing was changed.", "", "", ""});
    }
    for (std::size_t i = 0; i < sides->size(); ++i) {
      if ((*sides)[i] == Side::theirs) theirs.push_back(foreign.collisions[i].name);
    }
  }
  for (const SettingChange& change : foreign.takenOver) report_.takenOver.push_back(change.name);
  change_.takeOver(theirs);
  return checked();
}

// Without a person, as where the pane has asked already: what is edited here wins, and it is said.
void SettingsChange::Applying::keepOthers() {
  const ForeignChanges foreign = change_.foreignChanges();
  if (!foreign.any()) return;
  for (const SettingChange& change : foreign.takenOver) report_.takenOver.push_back(change.name);
  if (!foreign.collisions.empty()) {
    report_.warnings.push_back("Somebody else had changed " + namesOf(foreign.collisions) +
                               " meanwhile; your values were saved over theirs.");
  }
  change_.takeOver();
}

bool SettingsChange::Applying::damagedDecided(ChangeDecisions& person) {
  const FileStates files = state_.files;  // a restored file changes the state's
  for (const FileState& file : files) {
    if (!file.damage.empty() && state_.wouldSave(file.file) && !decide(file, person)) return false;
  }
  return true;
}

bool SettingsChange::Applying::decide(const FileState& file, ChangeDecisions& person) {
  const auto finding = std::ranges::find(change_.findings_, file.path, &FileFinding::file);
  const auto copy = state_.services.files.copyOf(file.path);
  switch (person.decideDamaged(*finding)) {
    case DamagedAnswer::restore:
      if (copy && !installCopy(*finding, *copy)) return false;
      if (copy) return true;
      break;
    case DamagedAnswer::replace:
      return setAside(file);
    case DamagedAnswer::cancel:
      break;
  }
  return fail({FailureCode::damaged, finding->sentence + " Nothing was changed.", "", "",
               "Repair the file, restore its copy, or replace it."});
}

// Bytes that cannot be read cannot be kept either; the person has been told why.
bool SettingsChange::Applying::setAside(const FileState& file) {
  if (file.content.kind != FileKind::regular && file.content.kind != FileKind::tooLarge) return true;
  const auto place = state_.services.files.setAside(file.path, file.content.bytes);
  if (!place) {
    return fail({FailureCode::notWritten,
                 "the damaged bytes of " + file.path + " could not be kept, so nothing was changed.", "", "",
                 ""});
  }
  report_.warnings.push_back("What " + file.path + " held is kept in " + *place + ".");
  return true;
}

// Puts the copy's bytes where the pane would put its own.
bool SettingsChange::Applying::installCopy(const FileFinding& file, const KeptCopy& copy) {
  const auto damaged = std::ranges::find(state_.files, file.file, &FileState::path);
  if (damaged == state_.files.end() || !setAside(*damaged)) return false;
  NVKServerPrefs& pane = state_.pane;
  state_.recording.forget();
  state_.services.tools.forget();
  if (damaged->file.temporaryName == nullptr) {
    const auto list = decodePropertyList(copy.bytes);
    if (list) platform().propertyLists.writeToFile(*list, file.file);
  } else {
    const std::string temporary = pane.getTempFilePath(damaged->file.temporaryName);
    OpenFile written(temporary.c_str(), FileMode::writeBinary);
    if (written.isOpen()) written.write(copy.bytes);
  }
  if (damaged->file.temporaryName != nullptr && state_.recording.effects().unwritten.empty()) {
    const std::string temporary = pane.getTempFilePath(damaged->file.temporaryName);
    pane.runCmd(PROC_SYSMV, "-f", temporary.c_str(), file.file.c_str());
    pane.runCmd(PROC_CHMOD, kChmodServerConfig.arguments[0], file.file.c_str());
    pane.runCmd(PROC_CHOWN, kChownServerConfig.arguments[0], file.file.c_str());
  }
  waitForTools();
  if (!report_.error) change_.takeOver();
  return report_.ok();
}

void SettingsChange::Applying::begin() {
  report_.changes = change_.pending();
  groups_ = changedGroups(state_.pane);
  expected_ = state_.expected();
  before_ = state_.edits({}, true);
  state_.recording.forget();
  state_.services.tools.forget();
}

void SettingsChange::Applying::waitForTools() {
  const bool ended = state_.options.waitForTools(state_.options.toolLimit);
  report_.effects = state_.recording.effects();
  report_.commands = outcomesOf(report_.effects, state_.services.tools.outcomes());
  report_.error = errorOf(report_.commands);
  if (!report_.error && !report_.effects.unwritten.empty()) {
    report_.error = unwritten(report_.effects.unwritten.front());
  }
  if (!ended) return;
  for (const StoredFile& file : storedFiles()) {
    if (file.temporaryName == nullptr) continue;
    state_.services.files.remove(state_.pane.getTempFilePath(file.temporaryName));
  }
}

void SettingsChange::Applying::keepCopies() {
  for (const FileState& file : state_.files) {
    const bool isGood =
        file.content.kind == FileKind::regular && file.damage.empty() && !file.content.bytes.empty();
    if (!isGood || file.file.byTool) continue;
    state_.services.files.keepCopy(file.path, file.content.bytes);
  }
}

// Whether the files hold now what was to be saved. A pane whose save failed afterwards believes otherwise, so
// it loads again and gets its edits back.
void SettingsChange::Applying::readBack() {
  waitForTools();
  const bool known = report_.error.code != FailureCode::tryAgain;
  const bool applySucceeded = std::ranges::all_of(report_.commands, [](const CommandOutcome& command) {
    return !isApply(command.launch) || (!command.launch.refused && command.outcome.succeeded());
  });
  addTold(report_.effects, applySucceeded, state_.services.delivery.lastWasDelivered(), report_);
  if (!known) return;
  {
    ShadowPane shadow = state_.shadow();
    addMissing(shadow.pane());
    state_.files = inspectFiles(state_.computer, state_.services.files);
    if (report_.notSaved.empty()) state_.rememberStored(shadow.pane());
  }
  addSaved();
  change_.look();
  if (report_.notSaved.empty()) {
    keepCopies();
    state_.pane.updateGui(false, false);
    return;
  }
  state_.reload(before_, {});
  if (report_.error) return;
  report_.error = {FailureCode::notWritten, "not saved: " + listInWords(report_.notSaved, "and") + ".", "",
                   "", ""};
}

void SettingsChange::Applying::addMissing(NVKServerPrefs& found) {
  for (const auto& [row, value] : expected_.rows) {
    if (row->baseline(found) == value) continue;
    const PaneSetting* setting = settingOfRow(state_.settings, state_.pane, *row);
    report_.notSaved.push_back(setting != nullptr ? setting->name() : row->key);
  }
  const NVKServerLimit& limit = found.m_admin_maxFiles.launchd;
  const bool limitIsThere =
      !expected_.limit || (expected_.limit->soft == limit.soft && expected_.limit->hard == limit.hard);
  if (!limitIsThere) report_.notSaved.emplace_back("the open files limit");
}

// A group is saved when all of its files hold what they should.
void SettingsChange::Applying::addSaved() {
  const bool all = report_.notSaved.empty() && report_.effects.unwritten.empty();
  const auto holds = [&](const GroupRow& group) {
    if (group.group == Group::limit) {
      return std::ranges::count(report_.notSaved, "the open files limit") == 0;
    }
    const SettingsTable table = group.group == Group::user     ? userSettings()
                                : group.group == Group::server ? serverSettings()
                                                               : notificationSettings();
    return std::ranges::none_of(table, [&](const Setting& row) {
      const PaneSetting* setting = settingOfRow(state_.settings, state_.pane, row);
      return setting != nullptr && std::ranges::count(report_.notSaved, setting->name()) > 0;
    });
  };
  for (const GroupRow& group : kGroups) {
    if (std::ranges::count(groups_, group.name) > 0 && (all || holds(group))) {
      report_.saved.emplace_back(group.name);
    }
  }
}

ChangeReport SettingsChange::apply(ChangeDecisions& person) {
  ChangeReport report;
  Applying applying(*this, report);
  const bool ready = applying.checked() && applying.locked() && applying.agreedWithOthers(person) &&
                     applying.damagedDecided(person);
  NVKServerPrefs& pane = state_->pane;
  if (ready && pane.ib_button_Apply.isEnabled()) {
    applying.keepCopies();
    applying.begin();
    report.applied = true;
    pane.buttonClicked(pane.ib_button_Apply);
    applying.readBack();
  }
  state_->giveLock();
  return report;
}

// The pane has asked already and is about to apply: nobody can be asked once more.
void SettingsChange::Applying::prepareUnasked() {
  const bool hasLock = locked();
  keepOthers();
  holdBack();
  refuseDamaged(hasLock);
  keepCopies();
  begin();
  report_.applied = true;
}

// Takes back what must not reach the pane's save, and remembers it.
void SettingsChange::Applying::holdBack() {
  std::vector<std::string> wrong;
  for (const ValueFinding& finding : change_.check()) {
    if (!finding.blocks) continue;
    if (!heldError_) {
      heldError_ = {FailureCode::wrongValue, finding.sentence, finding.setting, finding.outlet, ""};
    }
    wrong.push_back(finding.setting);
  }
  if (wrong.empty()) return;
  const Edits all = state_.edits({}, false);
  change_.takeOver(wrong);
  const Edits left = state_.edits({}, false);
  for (const auto& [row, states] : all.rows) {
    if (!left.rows.contains(row)) held_.rows.emplace(row, states);
  }
}

// Without the lock nothing may be written, and with it no damaged file.
void SettingsChange::Applying::refuseDamaged(bool hasLock) {
  std::set<std::string> refused;
  for (const FileState& file : state_.files) {
    if (hasLock && file.damage.empty()) continue;
    const char* name = file.file.temporaryName;
    refused.insert(name != nullptr ? state_.pane.getTempFilePath(name) : file.path);
    if (!heldError_ && !file.damage.empty() && state_.wouldSave(file.file)) {
      const auto finding = std::ranges::find(change_.findings_, file.path, &FileFinding::file);
      heldError_ = {FailureCode::damaged, finding->sentence + " It was not written over.", "", "", ""};
    }
  }
  if (!hasLock) heldError_ = lockIsTaken();
  state_.recording.refuse(std::move(refused));
}

// What was held back stands in its control again, for a person who can still edit it.
void SettingsChange::Applying::putBack() {
  state_.recording.refuse({});
  if (heldError_) report_.error = heldError_;
  if (held_.rows.empty() || !state_.pane.authorized()) return;
  for (const auto& [row, states] : held_.rows) restoreControls(states);
  state_.pane.updateGui(false, false);
}

ChangeReport SettingsChange::around(const std::function<void()>& call) {
  ChangeReport report;
  Applying applying(*this, report);
  bool isFirst = true;
  // The first panel is the pane's own question, whose default answer applies.
  state_->recording.answered = [&](int answer) {
    if (std::exchange(isFirst, false) && answer == NSAlertDefaultReturn) applying.prepareUnasked();
  };
  call();
  state_->recording.answered = nullptr;
  if (report.applied) {
    applying.readBack();
    applying.putBack();
  }
  state_->giveLock();
  return report;
}

ChangeReport SettingsChange::restore(const FileFinding& file) {
  ChangeReport report;
  Applying applying(*this, report);
  const auto copy = state_->services.files.copyOf(file.file);
  if (!copy) {
    report.error = {FailureCode::damaged, "there is no copy of " + file.file + ".", "", "", ""};
    return report;
  }
  if (!applying.locked()) return report;
  report.applied = true;
  if (applying.installCopy(file, *copy) && file.group == Group::server) {
    state_->recording.forget();
    state_->services.tools.forget();
    state_->pane.runCmd(kApplyConfig.tool, kApplyConfig.arguments[0]);
    applying.waitForTools();
  }
  if (report.ok()) report.saved.push_back(file.label);
  state_->giveLock();
  return report;
}

ChangeReport SettingsChange::takeUp() {
  ChangeReport report;
  Applying applying(*this, report);
  if (!applying.locked()) return report;
  report.applied = true;
  state_->recording.forget();
  state_->services.tools.forget();
  if (!state_->pane.runCmd(kApplyConfig.tool, kApplyConfig.arguments[0]) && !state_->pane.authorized()) {
    report.error = {FailureCode::notAllowed, "this needs administrator rights.", "", "", ""};
  } else {
    applying.waitForTools();
    addTold(report.effects, report.ok(), true, report);
  }
  state_->giveLock();
  return report;
}

Preview SettingsChange::preview() {
  State& state = *state_;
  NVKServerPrefs& pane = state.pane;
  Preview preview;
  preview.changes = pending();
  preview.groups = changedGroups(pane);
  {
    ShadowPane shadow = state.shadow();
    NVKServerPrefs& applied = shadow.pane();
    for (Control* control : pane.outlets()) {
      Control& copy = *applied.outlet(control->name());
      restoreState(*control, copy);
    }
    applied.m_admin_maxFiles = pane.m_admin_maxFiles;
    if (!preview.groups.empty()) applied.applyAllChanges();
    const Effects& effects = shadow.effects();
    for (const StoredFile& file : storedFiles()) {
      const std::string path = state.computer.propertyLists.stringByExpandingTildeInPath(file.path);
      const std::string written =
          file.temporaryName != nullptr ? pane.getTempFilePath(file.temporaryName) : path;
      const bool byTool = file.byTool && state.wouldSave(file);
      if (byTool || std::ranges::count(effects.written, written) > 0) preview.files.push_back(path);
    }
    std::ranges::copy_if(effects.launches, std::back_inserter(preview.commands),
                         [](const Launch& launch) { return !launch.reports; });
    ChangeReport told;
    addTold(effects, true, true, told);
    preview.told = told.told;
  }
  pane.updateGui(false, false);
  const auto isPendingControl = [&](const Control& control) { return pane.differsFromStored(control); };
  preview.endsConnections =
      pane.m_serverPid != -1 &&
      (isPendingControl(pane.ib_admin_edbox_nvkPort) || isPendingControl(pane.ib_admin_chkbox_nvkEnabled) ||
       isPendingControl(pane.ib_admin_edbox_rdpPort) || isPendingControl(pane.ib_admin_chkbox_rdpEnabled) ||
       isPendingControl(pane.ib_admin_chkbox_multiUser));
  preview.needsRestart =
      pane.authorized() && (pane.maxFilesChanged() || isPendingControl(pane.ib_admin_chkbox_noQuartz));
  return preview;
}

}  // namespace norvik
