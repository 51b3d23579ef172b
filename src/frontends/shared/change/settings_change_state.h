// What the change transaction keeps between its steps, and the small steps that several of them share. For
// the sources of SettingsChange alone.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
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

// What a person has done and nobody has saved: the controls of each edited row, and a staged limit.
struct Edits {
  std::map<const Setting*, std::vector<ControlState>> rows;
  std::optional<NVKServerLimit> limit;
};

// The values that the files should hold after a save.
struct Expected {
  std::map<const Setting*, int64_t> rows;
  std::optional<NVKServerLimit> limit;
};

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
  std::map<std::string, StoredValue> stored = {};
  std::map<const Setting*, int64_t> unedited = {};  // rows that differ from the file without an edit
  std::unique_ptr<HeldLock> lock = nullptr;
  bool lockIsCallers = false;

  ShadowPane shadow() const { return {computer, interface, pane.authorized()}; }
  // Remembers what the controls of a pane show that has just loaded the files.
  void rememberStored(NVKServerPrefs& shown);
  bool isEdited(const Setting& row) const;
  // Everything but the rows that are excluded, and the limit unless it is.
  Edits edits(const std::set<const Setting*>& excluded, bool withLimit) const;
  Expected expected() const;
  // Loads the files again and puts the edits back.
  void reload(const Edits& kept, const std::set<const Setting*>& takenBack);
  SettingChange changeOf(const PaneSetting& setting) const;
  bool wouldSave(const StoredFile& file) const;
  // Takes the lock unless the caller holds it; false where it cannot be had.
  bool takeLock();
  void giveLock();
};

}  // namespace norvik
