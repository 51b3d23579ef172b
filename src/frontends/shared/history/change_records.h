// Where the change transaction records what it did, so that it can be looked at and taken back later. Values
// alone; how and where they are kept is the implementation's.
#pragma once

#include <string>
#include <vector>

#include "src/frontends/shared/change/change_report.h"
#include "src/frontends/shared/change/pane_setting.h"

namespace norvik {

// A setting before and after a change, with the types of its values. The open files limit is one too, by
// kOpenFilesLimitName, as limitText writes it.
struct RecordedSetting {
  std::string name;
  SettingValue before, after;

  bool operator==(const RecordedSetting&) const = default;
};

struct RecordedChange {
  std::vector<RecordedSetting> settings;    // all that were to be changed
  FailureCode outcome = FailureCode::none;  // none where all went well
  std::vector<std::string> saved;     // groups that the files hold now, and files whose copy was put back
  std::vector<std::string> notSaved;  // settings that they do not hold

  bool operator==(const RecordedChange&) const = default;
};

// What is pending on the pane, `changes` as SettingsChange::pending gives them. The limit is one setting,
// though two fields show it.
std::vector<RecordedSetting> recordedOf(const NVKServerPrefs& pane,
                                        const std::vector<SettingChange>& changes);

class ChangeRecords {
 public:
  virtual ~ChangeRecords() = default;
  // Called once for each change that began, while the lock for changes is still held. Main thread; blocks as
  // the file system does. A sentence for a person where it could not be recorded; empty where it was.
  virtual std::string record(const RecordedChange& change) = 0;
};

// For a computer on which nothing is recorded.
class NoChangeRecords : public ChangeRecords {
 public:
  std::string record(const RecordedChange& /*change*/) override { return ""; }
};

}  // namespace norvik
