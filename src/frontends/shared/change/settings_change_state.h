// What the change transaction keeps between its steps, and the small steps that several of them share. For
// the sources of SettingsChange alone.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "src/frontends/shared/change/setting_rows.h"
#include "src/frontends/shared/change/settings_change.h"
#include "src/frontends/shared/change/shadow_pane.h"

namespace norvik {

// What a setting's controls show for what is stored.
struct StoredValue {
  std::string text;
  SettingValue value;
};

// A row as its last load left it.
struct LoadedRow {
  std::vector<ControlState> controls;
  int64_t field = 0;  // the value that it found in the file
  int64_t value = 0;  // the pending value without an edit; by a quirk of a load it may be another one
};

// What a person has done to a row and nobody has saved.
struct RowEdit {
  std::vector<ControlState> controls;
  // Whether it would change something. Else it only began to, as a box that was ticked for a port which is
  // not typed yet; that stays for as long as nobody else changes the row.
  bool counts = true;
};
struct Edits {
  std::map<const Setting*, RowEdit> rows;
  std::optional<NVKServerLimit> limit;
};

// The title of the page that has the control; empty for none.
std::string pageOf(const InterfaceDescription& interface, std::string_view outlet);

// The values that the files should hold after a save.
struct Expected {
  std::map<const Setting*, int64_t> rows;
  std::optional<NVKServerLimit> limit;
};

using Rows = std::set<const Setting*>;

struct SettingsChange::State {
  NVKServerPrefs& pane;
  RecordingPlatform& recording;
  Platform& computer;
  const InterfaceDescription& interface;
  ComputerServices services;
  ChangeOptions options;

  std::vector<PaneSetting> settings = {};
  std::vector<const ControlDescription*> shownFields = {};  // that only show something: the limit's
  FileStates files = {};                                    // as they were looked at
  // What a write of ours that failed has left of a file. Its content from before is in the pane alone, so
  // nothing is loaded from what is left.
  std::map<std::string, FileContent> torn = {};
  Expected awaited = {};  // what a tool of ours that had not ended in time may still bring about
  std::map<std::string, StoredValue> stored = {};
  std::map<const Setting*, LoadedRow> loaded = {};
  std::unique_ptr<HeldLock> lock = nullptr;
  bool lockIsCallers = false;

  ShadowPane shadow() const { return {computer, interface, pane.authorized()}; }
  // Brings the view back in step, after a shadow has used what the panes of a process share.
  void refresh();

  // Whether the pane takes anything from the file as it is.
  bool isReadable(const FileState& file) const;
  const FileState& fileOf(const Setting& row) const;

  // What the controls of a pane show that has just loaded the files.
  void rememberStored(NVKServerPrefs& shown);
  StoredValue storedIn(NVKServerPrefs& shown, const PaneSetting& setting) const;
  void rememberRow(const Setting& row);
  void rememberRows();
  // After a save: not the rows that it left out, as those of the administrator while the pane is locked.
  void rememberSaved();

  bool isEdited(const Setting& row) const;
  Edits edits(const Rows& excluded, bool withLimit) const;
  // The rows of the settings by name.
  Rows rowsNamed(const std::vector<std::string>& names) const;

  // Loads the files again, as far as they can be read, and puts the edits back. `before` are the files that
  // the pane had loaded, `dropped` the rows whose edits are not among those that are kept.
  void reload(const Edits& kept, const Rows& dropped, const FileStates& before);
  // Puts edits into the controls again.
  void putBack(const Edits& kept);
  // Takes edits back without a look at the files.
  void takeBack(const Rows& rows, bool withLimit);
  // Whether the pane has loaded files by itself: an edit is gone, or a field is another.
  bool hasDiscarded(const Edits& edits) const;
  // The pane has loaded the user's and the server's files by itself, as they were found, and the
  // notifications perhaps. `edits` are those of before.
  void adoptDiscarded(const FileStates& found, const Edits& edits, bool withNotifications);
  // The user's image controls show the server's pending values while they follow them.
  void followAndRefresh();

  SettingChange changeOf(const PaneSetting& setting) const;
  // What the setting means to a person who is asked about it: "none" for a choice that is switched off.
  std::string meaningIn(NVKServerPrefs& shown, const PaneSetting& setting) const;
  void addForeignRows(NVKServerPrefs& theirs, ForeignChanges& foreign) const;
  void addForeignLimit(const NVKServerPrefs& theirs, ForeignChanges& foreign) const;
  // Whether the pane shows something else than a pane that has just loaded the files.
  bool differsFrom(const NVKServerPrefs& fresh) const;

  // Takes the lock unless the caller holds it; false where it cannot be had.
  bool takeLock();
  void giveLock();

 private:
  void load(const FileStates& before);
  void loadServer();
};

}  // namespace norvik
