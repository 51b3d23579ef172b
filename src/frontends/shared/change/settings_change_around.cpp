// Around a call in which the pane applies by its own question: nobody can be asked once more, so what must
// not be saved is held back for as long as the call lasts.
#include <algorithm>
#include <iterator>
#include <optional>

#include "src/frontends/shared/change/settings_change_applying.h"
#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/language/language.h"

namespace norvik {

namespace {

std::string namesOf(const std::vector<Collision>& collisions) {
  std::vector<std::string> names;
  names.reserve(collisions.size());
  for (const Collision& collision : collisions) names.push_back(collision.name);
  return allOf(names);
}

// A save of the server's settings or of the limit writes the server's file.
bool isSavedWith(const StoredFile& file, const Setting& row) {
  const StoredFile& own = fileOfRow(row);
  return file.byTool ? std::string_view(own.path) == file.path : own.group == file.group;
}

// What discarding makes the pane load again: when it is locked, the notifications too.
bool isDiscarded(const StoredFile& file, bool withNotifications) {
  return file.group == Group::user || file.group == Group::server ||
         (withNotifications && file.group == Group::notifications);
}

}  // namespace

void SettingsChange::Applying::prepareUnasked() {
  savesNothing_ = !locked();
  report_.applied = true;
  if (!savesNothing_) keepOthers();
  holdBack();
  refuse();
  if (savesNothing_) return;
  keepCopies();
  warn();
  begin();
}

// Where nothing was saved, nothing is looked at either: what others have changed is asked about the next
// time.
void SettingsChange::Applying::finishUnasked() {
  if (!savesNothing_) readBack();
  record();  // without what was held back, which is no part of what was applied
  putBack();
}

// What is edited here wins, and it is said.
void SettingsChange::Applying::keepOthers() {
  const ForeignChanges foreign = change_.foreignChanges();
  if (!foreign.any()) return;
  for (const SettingChange& change : foreign.takenOver) report_.takenOver.push_back(change.name);
  if (!foreign.collisions.empty()) {
    report_.warnings.push_back(
        sentence("Somebody else had changed {1} meanwhile; what you set takes the place of it.",
                 {namesOf(foreign.collisions)}));
  }
  change_.takeOver();
}

// What must not reach the pane's save, and the first reason why.
ChangeError SettingsChange::Applying::whyHeld(Rows& rows, bool& limit) {
  if (savesNothing_) {
    rows.insert(storedRows().begin(), storedRows().end());
    limit = true;
    return report_.error;
  }
  ChangeError why;
  for (const ValueFinding& finding : change_.check()) {
    if (!finding.blocks) continue;
    if (!why) why = {finding.code, finding.sentence, finding.setting, finding.outlet, ""};
    rows.merge(state_.rowsNamed({finding.setting}));
    limit = limit || finding.setting == kOpenFilesLimitName;
  }
  for (const FileState& file : state_.files) {
    if (file.damage.empty() || !wouldSave(state_.pane, file.file)) continue;
    if (!why)
      why = {FailureCode::damaged, joinedSentences(sentenceOf(file), translated("It was not written over.")),
             "", "", translated(kMend)};
    std::ranges::copy_if(storedRows(), std::inserter(rows, rows.end()),
                         [&](const Setting* row) { return isSavedWith(file.file, *row); });
    limit =
        limit || file.file.group == Group::limit || (file.file.group == Group::server && !file.file.byTool);
  }
  return why;
}

void SettingsChange::Applying::holdBack() {
  Rows rows;
  bool limit = false;
  heldError_ = whyHeld(rows, limit);
  if (!heldError_) return;
  held_ = state_.edits({}, limit);
  std::erase_if(held_.rows, [&](const auto& entry) { return !rows.contains(entry.first); });
  state_.takeBack(rows, limit);
}

// Values that no edit has made pending cannot be held back, but their file can.
void SettingsChange::Applying::refuse() {
  std::set<std::string> refused;
  for (const FileState& file : state_.files) {
    if (savesNothing_ || !file.damage.empty()) refused.insert(writtenPath(state_.pane, file.file, file.path));
  }
  refused_ = refused;
  state_.recording.refuse(std::move(refused));
}

// What was held back stands in its control again, also where the pane is locked now: it is pending again when
// the lock is opened.
void SettingsChange::Applying::putBack() {
  if (heldError_) report_.error = heldError_;
  state_.putBack(held_);
}

void SettingsChange::State::adoptDiscarded(const FileStates& found, const Edits& edits,
                                           bool withNotifications) {
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (!isDiscarded(files[i].file, withNotifications)) continue;
    files[i] = found[i];
    torn.erase(files[i].path);  // the pane has loaded what is left of it
  }
  const auto isLoaded = [&](const Setting& row) {
    const auto edit = edits.rows.find(&row);
    const bool remains =
        edit != edits.rows.end() && row.differs(pane) && edit->second.controls == controlStates(pane, row);
    return !remains && isDiscarded(fileOfRow(row), withNotifications);
  };
  for (const Setting* row : storedRows()) {
    if (isLoaded(*row)) rememberRow(*row);
    loaded[row].field = row->baseline(pane);
  }
  for (const PaneSetting& setting : settings) {
    const Setting* row = rowOfSetting(pane, setting);
    if (row != nullptr && isLoaded(*row)) stored.insert_or_assign(setting.name(), storedIn(pane, setting));
  }
}

bool SettingsChange::State::hasDiscarded(const Edits& edits) const {
  if (edits.limit && !pane.maxFilesChanged()) return true;
  const bool isNew = std::ranges::any_of(
      loaded, [&](const auto& entry) { return entry.second.field != entry.first->baseline(pane); });
  return isNew || std::ranges::any_of(edits.rows, [&](const auto& entry) {
           return entry.second.controls != controlStates(pane, *entry.first);
         });
}

ChangeReport SettingsChange::around(const std::function<void()>& call) {
  ChangeReport report;
  Applying applying(*this, report);
  std::optional<int> answer;
  FileStates found;
  Edits edits;
  std::optional<PropertyList> notifications;
  // The first panel is the pane's own question: its default answer applies. What another one means depends on
  // the question.
  state_->recording.answered = [&](int given) {
    if (answer) return;
    answer = given;
    if (given == NSAlertDefaultReturn) return applying.prepareUnasked();
    found = inspectFiles(state_->computer, state_->services.files);
    edits = state_->edits({}, true);
    notifications = state_->pane.m_admin_Ntf_Config;
  };
  call();
  state_->recording.answered = nullptr;
  if (report.applied) {
    applying.finishUnasked();
  } else if (answer && state_->hasDiscarded(edits)) {
    state_->adoptDiscarded(found, edits, state_->pane.m_admin_Ntf_Config != notifications);
    findings_ =
        findingsOf(state_->files, state_->computer, state_->services.files, state_->interface, state_->pane);
  }
  return report;
}

}  // namespace norvik
