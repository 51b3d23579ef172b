// Applying: the lock, others' changes, the pane's own sequence, its tools, reading back.
#include <algorithm>

#include "src/frontends/shared/change/settings_change_applying.h"
#include "src/frontends/shared/change/tool_results.h"
#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/language/language.h"
#include "src/server/mac/control/tool_commands.h"

namespace norvik {

namespace {

constexpr const char* kTryAgain = english("Try again in a moment.");
// How often a person is asked anew because files change all the time.
constexpr int kMostRounds = 10;

bool isApply(const Launch& launch) {
  return launch.tool == PROC_NVKSVC &&
         launch.arguments == std::vector<std::string>{kApplyConfig.arguments[0]};
}

ChangeError tryAgain(const char* why) {
  return {FailureCode::tryAgain, joinedSentences(translated(why), translated(kNothingChanged)), "", "",
          translated(kTryAgain)};
}

std::string agentInWords(int32_t pid) {
  return sentence("the agent, process {1}", {std::to_string(pid)});
}

}  // namespace

void addTold(const Effects& effects, bool applySucceeded, bool posted, ChangeReport& report) {
  const bool applies = std::ranges::any_of(effects.launches, isApply);
  if (applies) (applySucceeded ? report.told : report.notTold).emplace_back(translated("the server"));
  for (const int32_t pid : effects.signalled) report.told.push_back(agentInWords(pid));
  for (const int32_t pid : effects.notSignalled) {
    report.notTold.push_back(agentInWords(pid));
  }
  if (!effects.posted.empty())
    (posted ? report.told : report.notTold).emplace_back(translated("the menu agent"));
}

std::vector<std::string> changedGroups(const NVKServerPrefs& pane) {
  std::vector<std::string> names;
  for (const SettingGroup& group : settingGroups()) {
    if (wouldSave(pane, group.group)) names.emplace_back(group.name);
  }
  return names;
}

SettingsChange::Applying::~Applying() {
  state_.recording.answered = nullptr;
  state_.recording.refuse({});
  state_.giveLock();
}

// ---- Before

bool SettingsChange::Applying::checked() {
  for (const ValueFinding& finding : change_.check()) {
    if (finding.blocks) return fail({finding.code, finding.sentence, finding.setting, finding.outlet, ""});
  }
  return true;
}

bool SettingsChange::Applying::locked() {
  if (!state_.options.waitForTools(state_.options.toolLimit))
    return fail(tryAgain(english("A command of an earlier change has not ended yet.")));
  removeTemporary();
  return state_.takeLock() || fail(tryAgain(english("Another program is changing the settings.")));
}

bool SettingsChange::Applying::agreed(ChangeDecisions& person) {
  for (int round = 0; round < kMostRounds; ++round) {
    if (!agreedWithOthers(person) || !damagedDecided(person)) return false;
    if (holdSame(inspectFiles(state_.computer, state_.services.files), state_.files)) return true;
  }
  return fail(tryAgain(english("The settings files are changed all the time by somebody else.")));
}

bool SettingsChange::Applying::agreedWithOthers(ChangeDecisions& person) {
  const auto takenOver = change_.agree(person);
  if (!takenOver) return fail({FailureCode::cancelled, translated(kNothingChanged), "", "", ""});
  report_.takenOver = *takenOver;
  return checked();
}

void SettingsChange::Applying::warn() {
  for (const ValueFinding& finding : change_.check()) {
    if (!finding.blocks) report_.warnings.push_back(finding.sentence);
  }
}

void SettingsChange::Applying::keepCopies() {
  for (const FileState& file : state_.files) {
    const bool isGood = file.content.kind == FileKind::regular && state_.isReadable(file);
    if (!isGood || file.content.bytes.empty() || file.file.byTool) continue;
    state_.services.files.keepCopy(file.path, file.content.bytes);
  }
}

void SettingsChange::Applying::begin() {
  const NVKServerPrefs& pane = state_.pane;
  report_.applied = true;
  report_.changes = change_.pending();
  groups_ = changedGroups(pane);
  for (const Setting* row : storedRows()) {
    if (isPending(pane, *row)) expected_.rows.emplace(row, row->pendingValue(pane));
  }
  if (wouldSave(pane, Group::limit)) expected_.limit = wholeLimit(pane.m_admin_maxFiles.launchd);
  before_ = state_.edits({}, true);
  begun_ = recordedOf(state_.pane, report_.changes);
  state_.recording.forget();
  state_.services.tools.forget();
}

void SettingsChange::Applying::record() {
  if (!begun_ && restored_.empty()) return;
  RecordedChange change{begun_.value_or(std::vector<RecordedSetting>()), report_.error.code, report_.saved,
                        report_.notSaved};
  for (const StoredFile& file : restored_) {
    if (std::ranges::count(change.saved, file.label) == 0) change.saved.emplace_back(file.label);
  }
  const std::string why = state_.options.records.record(change);
  if (!why.empty()) report_.warnings.push_back(why);
}

// ---- After

// The first file that could not be written, by its name and not only by that of a temporary one.
ChangeError SettingsChange::Applying::unwritten() const {
  const UnwrittenFile& failed = report_.effects.unwritten.front();
  std::string name = sentence("The file {1}", {failed.path});
  for (const FileState& file : state_.files) {
    if (writtenPath(state_.pane, file.file, file.path) != failed.path) continue;
    const std::string label = capitalised(translated(file.file.label));
    name = file.file.temporaryName != nullptr
               ? sentence("{1}, {2}, by way of {3}", {label, file.path, failed.path})
               : sentence("{1}, {2},", {label, file.path});
  }
  return {
      FailureCode::notWritten,
      failed.reason.empty() ? sentence("{1} could not be written.", {name})
                            : sentence("{1} could not be written: {2}.", {name, failed.reason}),
      "", "",
      translated("Make sure that there is room on the disk and that you may write there, then apply again.")};
}

void SettingsChange::Applying::waitForTools() {
  const bool ended = state_.options.waitForTools(state_.options.toolLimit);
  report_.effects = state_.recording.effects();
  const auto commands = outcomesOf(report_.effects, state_.services.tools.outcomes());
  report_.commands.insert(report_.commands.end(), commands.begin(), commands.end());
  report_.error = errorOf(commands);
  if (!report_.error && !report_.effects.unwritten.empty()) report_.error = unwritten();
  if (ended) removeTemporary();
}

// What a tool that failed has not moved. One that runs still needs its file.
void SettingsChange::Applying::removeTemporary() {
  for (const StoredFile& file : storedFiles()) {
    if (file.temporaryName == nullptr) continue;
    state_.services.files.remove(state_.pane.getTempFilePath(file.temporaryName));
  }
}

// Whether the files hold now what was to be saved. A pane whose save failed, or is not known yet to have
// succeeded, believes otherwise, so it loads again and gets its edits back.
void SettingsChange::Applying::readBack() {
  waitForTools();
  const bool applySucceeded = std::ranges::all_of(report_.commands, [](const CommandOutcome& command) {
    return !isApply(command.launch) || (!command.launch.refused && command.outcome.succeeded());
  });
  addTold(report_.effects, applySucceeded, state_.services.delivery.lastWasDelivered(), report_);
  const FileStates before = state_.files;
  change_.look();  // before the files are loaded: what changes in between is found the next time
  addTorn(before);
  bool isSaved = false;
  bool isStale = false;
  {
    ShadowPane shadow = state_.shadow();
    addMissing(shadow.pane());
    addSaved();
    isSaved = report_.notSaved.empty() && report_.effects.unwritten.empty();
    isStale = isSaved && wroteLater(shadow.pane());
    if (isSaved) state_.rememberStored(shadow.pane());
  }
  state_.awaited = report_.error.code == FailureCode::tryAgain ? expected_ : Expected();
  if (isSaved) {
    keepCopies();
    state_.rememberSaved();
    if (isStale) state_.reload(state_.edits({}, true), {}, before);
    return state_.refresh();
  }
  state_.reload(before_, {}, before);
  if (report_.error) return;
  report_.error = {FailureCode::notWritten, sentence("Not saved: {1}.", {allOf(report_.notSaved)}), "", "",
                   translated("Apply again.")};
}

// A failed write in place may have left less than there was. The pane still has it.
void SettingsChange::Applying::addTorn(const FileStates& before) {
  for (std::size_t i = 0; i < state_.files.size(); ++i) {
    const FileState& file = state_.files[i];
    const bool failed = std::ranges::count(report_.effects.unwritten, file.path, &UnwrittenFile::path) > 0;
    const bool succeeded = std::ranges::count(report_.effects.written, file.path) > 0;
    const bool tried = failed && !refused_.contains(file.path);
    if (tried && !file.holdsSameAs(before[i])) state_.torn[file.path] = file.content;
    if (succeeded) state_.torn.erase(file.path);
  }
}

void SettingsChange::Applying::addMissing(NVKServerPrefs& found) {
  for (const auto& [row, value] : expected_.rows) {
    if (row->baseline(found) == value && state_.isReadable(state_.fileOf(*row))) continue;
    const PaneSetting* setting = settingOfRow(state_.settings, state_.pane, *row);
    report_.notSaved.push_back(setting != nullptr ? setting->name() : row->key);
  }
  const NVKServerLimit limit = wholeLimit(found.m_admin_maxFiles.launchd);
  if (expected_.limit && !sameLimit(*expected_.limit, limit)) {
    report_.notSaved.emplace_back(kOpenFilesLimitName);
  }
}

// A group is saved when all of its files were written and hold what they should.
void SettingsChange::Applying::addSaved() {
  const auto isMissing = [&](const Setting& row) {
    const PaneSetting* setting = settingOfRow(state_.settings, state_.pane, row);
    return setting != nullptr && std::ranges::count(report_.notSaved, setting->name()) > 0;
  };
  const auto isUnwritten = [&](const FileState& file) {
    const std::string path = writtenPath(state_.pane, file.file, file.path);
    return std::ranges::count(report_.effects.unwritten, path, &UnwrittenFile::path) > 0;
  };
  for (const SettingGroup& group : settingGroups()) {
    if (std::ranges::count(groups_, group.name) == 0) continue;
    const bool failed =
        std::ranges::any_of(group.settings(), isMissing) ||
        (group.group == Group::limit && std::ranges::count(report_.notSaved, kOpenFilesLimitName) > 0) ||
        std::ranges::any_of(state_.files, [&](const FileState& file) {
          return file.file.group == group.group && isUnwritten(file);
        });
    if (!failed) report_.saved.emplace_back(group.name);
  }
}

// What the pane has loaded would write over it at the next save.
bool SettingsChange::Applying::wroteLater(NVKServerPrefs& found) {
  if (!state_.differsFrom(found)) return false;
  ForeignChanges foreign;
  state_.addForeignRows(found, foreign);
  state_.addForeignLimit(found, foreign);
  for (const SettingChange& change : foreign.takenOver) report_.takenOver.push_back(change.name);
  return true;
}

std::optional<std::vector<std::string>> SettingsChange::agree(ChangeDecisions& person) {
  ForeignChanges foreign = foreignChanges();
  std::vector<Collision> asked;
  std::vector<std::string> theirs;
  while (foreign.collisions != asked) {
    asked = foreign.collisions;
    theirs.clear();
    if (asked.empty()) break;
    const auto sides = person.resolve(asked);
    if (!sides || sides->size() != asked.size()) return std::nullopt;
    for (std::size_t i = 0; i < asked.size(); ++i) {
      if ((*sides)[i] == Side::theirs) theirs.push_back(asked[i].name);
    }
    foreign = foreignChanges();
  }
  if (!foreign.any()) return std::vector<std::string>();
  std::vector<std::string> names;
  names.reserve(foreign.takenOver.size() + theirs.size());
  for (const SettingChange& change : foreign.takenOver) names.push_back(change.name);
  names.insert(names.end(), theirs.begin(), theirs.end());
  takeOver(theirs);
  return names;
}

ChangeReport SettingsChange::apply(ChangeDecisions& person) {
  ChangeReport report;
  Applying applying(*this, report);
  if (!applying.checked() || !applying.locked() || !applying.agreed(person)) return report;
  state_->refresh();
  NVKServerPrefs& pane = state_->pane;
  if (!pane.ib_button_Apply.isEnabled()) {
    applying.tellRestored();
    applying.record();
    return report;
  }
  applying.keepCopies();
  applying.warn();
  applying.begin();
  pane.buttonClicked(pane.ib_button_Apply);
  applying.readBack();
  applying.record();
  return report;
}

}  // namespace norvik
