// Damaged files: what a person decides about them, putting a copy back, keeping damaged bytes; and making the
// server take up what is stored.
#include <algorithm>

#include "src/adapters/property_lists/codec.h"
#include "src/frontends/shared/change/settings_change_applying.h"
#include "src/frontends/shared/language/language.h"
#include "src/server/mac/control/tool_commands.h"
#include "src/server/mac/platform/open_file.h"

namespace norvik {

namespace {

constexpr const char* kRepair = english("Repair the file, or replace it.");

ChangeError needsRights() {
  return {FailureCode::notAllowed, translated("This needs administrator rights, which were not granted."), "",
          "", translated("Click the lock, then try again.")};
}

}  // namespace

const FileFinding* SettingsChange::Applying::findingOf(const FileState& file) const {
  const auto found = std::ranges::find_if(change_.findings_, [&](const FileFinding& finding) {
    return finding.damaged && finding.file == file.path;
  });
  return found != change_.findings_.end() ? &*found : nullptr;
}

std::string SettingsChange::Applying::sentenceOf(const FileState& file) const {
  const FileFinding* finding = findingOf(file);
  return finding != nullptr ? finding->sentence
                            : sentence("{1} is damaged.", {capitalised(translated(file.file.label))});
}

// All are asked about before anything is done, so that nothing is done where one answer is to cancel.
bool SettingsChange::Applying::damagedDecided(ChangeDecisions& person) {
  std::vector<std::pair<FileState, DamagedAnswer>> answers;
  const FileStates files = state_.files;
  for (const FileState& file : files) {
    const FileFinding* finding = findingOf(file);
    const auto settled = settled_.find(file.path);
    const bool isSettled = settled != settled_.end() && settled->second.bytes == file.content.bytes;
    if (finding == nullptr || isSettled || !wouldSave(state_.pane, file.file)) continue;
    const DamagedAnswer answer = person.decideDamaged(*finding);
    if (!mayMend(file, answer)) return false;
    answers.emplace_back(file, answer);
  }
  return std::ranges::all_of(answers,
                             [&](const auto& decided) { return mend(decided.first, decided.second); });
}

bool SettingsChange::Applying::mayMend(const FileState& file, DamagedAnswer answer) {
  if (answer == DamagedAnswer::cancel) {
    return fail({FailureCode::damaged, joinedSentences(sentenceOf(file), translated(kNothingChanged)), "", "",
                 translated(kMend)});
  }
  if (!mayBeWrittenOver(file)) return false;
  return answer == DamagedAnswer::replace || goodCopy(file);
}

// Bytes that somebody else can read are not lost for a click. Those of a broken medium nobody can read.
bool SettingsChange::Applying::mayBeWrittenOver(const FileState& file) {
  if (file.content.kind == FileKind::regular || file.content.kind == FileKind::unreadable) return true;
  return fail({FailureCode::damaged,
               joinedSentences(sentenceOf(file),
                               translated("What it holds could not be kept, so nothing was changed.")),
               "", "",
               file.content.kind == FileKind::notAllowed
                   ? translated("Make the file readable, or move it away, then try again.")
                   : translated("Move it away, then try again.")});
}

std::optional<KeptCopy> SettingsChange::Applying::goodCopy(const FileState& file) {
  auto copy = state_.services.files.copyOf(file.path);
  if (!copy) {
    fail({FailureCode::damaged, sentence("There is no copy of {1}. Nothing was changed.", {file.path}), "",
          "", translated(kRepair)});
    return std::nullopt;
  }
  const std::string damage =
      copy->bytes.empty() ? translated("it is empty") : damageOf(file.file, copy->bytes);
  if (damage.empty()) return copy;
  fail({FailureCode::damaged,
        sentence("The copy of {1}, {2}, is damaged too: {3}. Nothing was changed.",
                 {file.path, copy->place, damage}),
        "", "", translated(kRepair)});
  return std::nullopt;
}

// Does nothing about a file that has changed since a person was asked: it is looked at again.
bool SettingsChange::Applying::mend(const FileState& file, DamagedAnswer answer) {
  const FileContent now = state_.services.files.inspect(file.path);
  if (now.kind != file.content.kind || now.bytes != file.content.bytes) return true;
  if (answer == DamagedAnswer::replace) {
    settled_.insert_or_assign(file.path, file.content);
    return setAside(file);
  }
  const auto copy = goodCopy(file);
  if (!copy || !setAside(file) || !install(file, *copy)) return false;
  change_.takeOver();
  return checked();
}

bool SettingsChange::Applying::setAside(const FileState& file) {
  if (file.content.kind != FileKind::regular) {
    report_.warnings.push_back(
        sentence("What {1} held could not be kept, as it cannot be read.", {file.path}));
    return true;
  }
  const auto place = state_.services.files.setAside(file.path, file.content.bytes);
  if (!place) {
    return fail({FailureCode::notWritten,
                 sentence("The damaged bytes of {1} could not be kept, so nothing was changed.", {file.path}),
                 "", "", translated("Make room on the disk, then try again.")});
  }
  report_.warnings.push_back(sentence("What {1} held is kept in {2}.", {file.path, *place}));
  return true;
}

// Puts the copy's bytes where the pane would put its own, and looks whether they are there.
bool SettingsChange::Applying::install(const FileState& file, const KeptCopy& copy) {
  NVKServerPrefs& pane = state_.pane;
  if (file.file.temporaryName != nullptr && !pane.authorized()) return fail(needsRights());
  state_.recording.forget();
  state_.services.tools.forget();
  const std::string temporary = writtenPath(pane, file.file, file.path);
  if (file.file.temporaryName == nullptr) {
    platform().propertyLists.writeToFile(*decodePropertyList(copy.bytes), file.path);
  } else {
    OpenFile written(temporary.c_str(), FileMode::writeBinary);
    if (written.isOpen()) written.write(copy.bytes);
  }
  if (file.file.temporaryName != nullptr && state_.recording.effects().unwritten.empty()) {
    pane.runCmd(PROC_SYSMV, "-f", temporary.c_str(), file.path.c_str());
    pane.runCmd(PROC_CHMOD, kChmodServerConfig.arguments[0], file.path.c_str());
    pane.runCmd(PROC_CHOWN, kChownServerConfig.arguments[0], file.path.c_str());
  }
  waitForTools();
  const FileContent now = state_.services.files.inspect(file.path);
  const bool isOther = now.kind != file.content.kind || now.bytes != file.content.bytes;
  if (!report_.effects.unwritten.empty() && isOther) state_.torn[file.path] = now;
  if (report_.error) return false;
  if (now.kind != FileKind::regular || now.bytes.empty() || !damageOf(file.file, now.bytes).empty()) {
    return fail({FailureCode::notWritten, sentence("The copy of {1} could not be put back.", {file.path}), "",
                 "", translated("Try again.")});
  }
  report_.warnings.push_back(sentence("The copy of {1} is now {2}.", {copy.time, file.path}));
  restored_.push_back(file.file);
  return true;
}

// Looks at the file anew, and not at the others: what they hold now is not loaded yet.
void SettingsChange::Applying::restore(const FileFinding& finding) {
  const FileStates now = inspectFiles(state_.computer, state_.services.files);
  const auto file = std::ranges::find(now, finding.file, &FileState::path);
  if (file == now.end() || file->damage.empty()) {
    fail({FailureCode::notSettable, sentence("{1} is not damaged. Nothing was changed.", {finding.file}), "",
          "", ""});
    return;
  }
  if (file->file.temporaryName != nullptr && !state_.pane.authorized()) {
    fail(needsRights());
    return;
  }
  if (!mayMend(*file, DamagedAnswer::restore) || !locked()) return;
  report_.applied = true;
  if (!mend(*file, DamagedAnswer::restore)) return;
  if (!restored_.empty()) report_.saved.emplace_back(file->file.label);
  tellRestored();
}

void SettingsChange::Applying::tellRestored() {
  const auto isOf = [](Group group) {
    return [group](const StoredFile& file) { return file.group == group; };
  };
  if (restored_.empty()) return;
  report_.applied = true;
  if (std::ranges::any_of(restored_, isOf(Group::server))) return takeUp();
  if (!std::ranges::any_of(restored_, isOf(Group::user))) return;
  state_.recording.forget();
  apply_user_config();
  report_.effects = state_.recording.effects();
  addTold(report_.effects, true, true, report_);
}

void SettingsChange::Applying::takeUp() {
  if (!state_.pane.authorized()) {
    fail(needsRights());
    return;
  }
  state_.recording.forget();
  state_.services.tools.forget();
  state_.pane.runCmd(kApplyConfig.tool, kApplyConfig.arguments[0]);
  waitForTools();
  addTold(report_.effects, report_.ok(), true, report_);
}

ChangeReport SettingsChange::restore(const FileFinding& file) {
  ChangeReport report;
  Applying applying(*this, report);
  applying.restore(file);
  applying.record();
  return report;
}

ChangeReport SettingsChange::takeUp() {
  ChangeReport report;
  Applying applying(*this, report);
  if (!applying.locked()) return report;
  report.applied = state_->pane.authorized();
  applying.takeUp();
  return report;
}

}  // namespace norvik
