// The change transaction: what a front end does around Apply, which by the pane's own rules is silent and the
// last writer's. Look, check, preview, guard, apply, read back, report. Knows no toolkit; every front end
// goes through it for every Apply. Main thread only.
//
//   look           before the pane loads: which files are damaged, what do they hold
//   check          can the pending values be
//   preview        what would be saved, run and told
//   apply          takes the lock, takes over what others changed meanwhile, asks about what collides and
//                  about damaged files, lets the pane apply, waits for its tools, reads back
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "src/adapters/services/computer_services.h"
#include "src/frontends/shared/change/change_report.h"
#include "src/frontends/shared/change/recording_platform.h"
#include "src/frontends/shared/change/stored_files.h"
#include "src/frontends/shared/checks/port_check.h"
#include "src/frontends/shared/history/change_records.h"

namespace norvik {

// A pending value that Apply must not reach the pane with, or a warning beside it.
struct ValueFinding {
  std::string setting;  // its name
  std::string outlet;   // the field
  std::string sentence;
  bool blocks = true;
  FailureCode code = FailureCode::wrongValue;  // of an Apply that it blocks
};

// A setting that this front end and somebody else have both changed.
struct Collision {
  std::string name, label, page;
  std::string loaded, theirs, yours;

  bool operator==(const Collision&) const = default;
};
enum class Side { mine, theirs };

enum class DamagedAnswer {
  cancel,   // nothing is saved
  restore,  // begin with the copy; only where there is one that is good
  replace,  // begin with what was loaded last, or with the defaults; the damaged bytes are kept beside
};

// What only a person can decide. Called while the lock is held, so an answer should not take for ever.
class ChangeDecisions {
 public:
  virtual ~ChangeDecisions() = default;
  // Which value each colliding setting gets, in the order given; nothing to cancel. Asked again where others
  // change more of them meanwhile.
  virtual std::optional<std::vector<Side>> resolve(const std::vector<Collision>& collisions) = 0;
  // What to do about a damaged file that the change would write over. All files are asked about before
  // anything is done about one. A file whose bytes cannot be kept is not replaced, whatever the answer,
  // unless its medium is broken.
  virtual DamagedAnswer decideDamaged(const FileFinding& file) = 0;
};

// What others have changed in the files since they were looked at.
struct ForeignChanges {
  std::vector<SettingChange> takenOver;  // settings that nobody edits here
  std::vector<Collision> collisions;
  bool filesChanged = false;  // also true where only keys changed that the pane does not know

  bool any() const { return filesChanged; }
};

struct ChangeOptions {
  ChangeRecords& records;    // of every change that begins; borrowed
  PortInUse portInUse = {};  // without one, every port counts as free
  // Without one, the computer's own. Blocks until the tools have ended, at most until the limit; a window
  // paints meanwhile.
  std::function<bool(std::chrono::milliseconds limit)> waitForTools = {};
  std::chrono::milliseconds lockLimit{10'000};
  std::chrono::milliseconds toolLimit{30'000};
};

class SettingsChange {
 public:
  // Borrows everything. The pane works over `recording`, which works over `computer`.
  SettingsChange(NVKServerPrefs& pane, RecordingPlatform& recording, Platform& computer,
                 const InterfaceDescription& interface, ComputerServices services, ChangeOptions options);
  ~SettingsChange();
  SettingsChange(const SettingsChange&) = delete;
  SettingsChange& operator=(const SettingsChange&) = delete;

  // ---- Look

  // Inspects the files. To be called right before the pane loads them.
  void look();
  // To be called right after the pane has loaded them: remembers what its controls show unedited.
  void loaded();
  // What is wrong with the files, damaged ones first.
  const std::vector<FileFinding>& findings() const { return findings_; }

  // ---- Against others

  // Compares the files of now with those that were looked at. Reads files; not for every tick. A file that is
  // damaged now has changed, and no setting with it.
  ForeignChanges foreignChanges();
  // Asks about what collides, and asks again if others change something while the question is open; then
  // takes over. The names of the settings that were taken over; nothing if the person cancels, and then
  // nothing is different.
  std::optional<std::vector<std::string>> agree(ChangeDecisions& person);
  // Loads the files of now; edits of the person stay, except those of `theirs` (settings by name, or
  // kOpenFilesLimitName). Nothing is loaded from a file that is damaged: the pane keeps what it knew. Whoever
  // calls it has asked about the collisions, as they are none afterwards.
  void takeOver(const std::vector<std::string>& theirs = {});

  // ---- Check, preview

  // Every pending value that cannot be, on all pages, in their order; warnings after them, such as lines of
  // a file that the save would cut.
  std::vector<ValueFinding> check();
  // The settings whose pending values differ from the stored ones, open files limit included.
  std::vector<SettingChange> pending();
  Preview preview();
  // Takes back one pending change by its name, or all of them. Reads no file. What the pane has switched
  // along with a setting is a change of its own.
  void takeBack(const std::string& setting);
  void takeBackAll();

  // Why the last request for administrator rights was refused, as far as the computer says.
  AuthorizationRefusal refusal() const;

  // ---- Apply

  // Everything around Apply, and Apply itself. Waits for the tools of earlier changes first. Where it fails,
  // the edits are pending again, except those that were saved. An exception of `person` passes through.
  ChangeReport apply(ChangeDecisions& person);
  // Holds the lock, for a front end that reads and edits under it before it applies; false where somebody
  // else held it for too long. While it is held, apply does not take it again.
  bool holdLock();
  void releaseLock();

  // Around a call in which the pane may apply by its own question, as while it is left or locked: looks and
  // checks first, and makes sure that no value that cannot be and no damaged file is written over; reads back
  // afterwards. Where the pane did not apply, the report says so and has no error.
  ChangeReport around(const std::function<void()>& call);

  // Puts the kept copy of a damaged file back, with the pane's own saving. Needs the lock of the pane open
  // for files of the administrator.
  ChangeReport restore(const FileFinding& file);

  // What the server was told last by "apply": takes up what is stored. Needs the pane's lock open.
  ChangeReport takeUp();

 private:
  struct State;
  class Applying;
  std::unique_ptr<State> state_;
  std::vector<FileFinding> findings_;
};

}  // namespace norvik
