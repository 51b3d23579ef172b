// One run of the change transaction: what apply, restore, taking up and a call around the pane's own applying
// have in common. For the sources of SettingsChange alone.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "src/frontends/shared/change/settings_change.h"
#include "src/frontends/shared/change/settings_change_state.h"
#include "src/frontends/shared/language/language.h"

namespace norvik {

// Whom a save told about itself, as far as it is known.
void addTold(const Effects& effects, bool applySucceeded, bool posted, ChangeReport& report);
// What a person can do about a damaged file.
inline constexpr const char* kNothingChanged = english("Nothing was changed.");
inline constexpr const char* kMend = english("Repair the file, restore its copy, or replace it.");
// The names of the groups that Apply would save.
std::vector<std::string> changedGroups(const NVKServerPrefs& pane);

class SettingsChange::Applying {
 public:
  Applying(SettingsChange& change, ChangeReport& report)
      : change_(change), state_(*change.state_), report_(report) {}
  // Gives the lock, whatever happened.
  ~Applying();
  Applying(const Applying&) = delete;
  Applying& operator=(const Applying&) = delete;

  // ---- Before. Each returns false, with the reason in the report, where it must not go on.

  bool checked();
  // Waits until the tools of earlier changes have ended, as nothing may overtake them, and takes the lock.
  bool locked();
  // About others' changes and about damaged files, again until nothing changes any more.
  bool agreed(ChangeDecisions& person);
  void warn();
  void keepCopies();
  void begin();
  // Records the change, if one began; says in the report where that fails.
  void record();

  // ---- Where the pane has asked already: settings_change_around.cpp

  void prepareUnasked();
  void finishUnasked();

  // ---- After

  void waitForTools();
  void readBack();

  // ---- Damaged files: settings_change_restore.cpp

  bool damagedDecided(ChangeDecisions& person);
  void restore(const FileFinding& finding);
  // Makes the server or the agent take up what was restored.
  void tellRestored();
  void takeUp();

 private:
  bool agreedWithOthers(ChangeDecisions& person);
  void keepOthers();
  ChangeError whyHeld(Rows& rows, bool& limit);
  void holdBack();
  void refuse();
  void putBack();

  bool mayMend(const FileState& file, DamagedAnswer answer);
  bool mend(const FileState& file, DamagedAnswer answer);
  bool mayBeWrittenOver(const FileState& file);
  std::optional<KeptCopy> goodCopy(const FileState& file);
  const FileFinding* findingOf(const FileState& file) const;
  bool setAside(const FileState& file);
  bool install(const FileState& file, const KeptCopy& copy);

  void addMissing(NVKServerPrefs& found);
  void addSaved();
  void addTorn(const FileStates& before);
  // Whether somebody else wrote between the pane's save and now; says what.
  bool wroteLater(NVKServerPrefs& found);
  void removeTemporary();
  ChangeError unwritten() const;
  std::string sentenceOf(const FileState& file) const;
  bool fail(ChangeError error) {
    report_.error = std::move(error);
    return false;
  }

  SettingsChange& change_;
  State& state_;
  ChangeReport& report_;
  Expected expected_;
  Edits before_;
  Edits held_;                     // edits that must not be saved, for as long as the pane applies
  ChangeError heldError_;          // and why
  bool savesNothing_ = false;      // as somebody else holds the lock
  std::set<std::string> refused_;  // files that the pane is kept from writing
  std::vector<std::string> groups_;
  std::optional<std::vector<RecordedSetting>> begun_;  // what the change is about, once it began
  std::map<std::string, FileContent> settled_;         // damaged files that may be written over, as they were
  std::vector<StoredFile> restored_;
};

}  // namespace norvik
