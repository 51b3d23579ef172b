// Lies between the pane and the computer and records what the pane does to it, so that a front end can report
// it. It can also withhold all of it, so that a front end can find out beforehand what would happen: the pane
// then believes that its files were written and its tools ran.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "src/server/mac/platform/platform.h"

namespace norvik {

enum class RecordingMode {
  real,        // everything happens
  looking,     // the lock is opened and tools whose output is read run; nothing is changed
  pretending,  // the lock only seems to open; nothing runs and nothing is changed
};

struct Launch {
  std::string tool;
  std::vector<std::string> arguments;
  bool reports = false;  // its output is read: it changes nothing
  bool refused = false;  // the authorization service did not run it
};

// A file that could not be written whole, and why where the system says so.
struct UnwrittenFile {
  std::string path;
  std::string reason;  // "No space left on device"; may be empty

  bool operator==(const UnwrittenFile&) const = default;
};

// What the pane did, or believes to have done, in order.
struct Effects {
  std::vector<Launch> launches;
  std::vector<std::string> posted;    // names of notifications
  std::vector<int32_t> signalled;     // processes that were asked to read their settings again
  std::vector<int32_t> notSignalled;  // and those that could not be asked
  std::vector<std::string> written;   // paths of files that were written whole
  std::vector<UnwrittenFile> unwritten;
  std::vector<std::string> logged;  // lines of the system log

  bool empty() const {
    return launches.empty() && posted.empty() && signalled.empty() && written.empty() && unwritten.empty();
  }
};

class RecordingPlatform {
 public:
  // Installs itself as the pane's computer for as long as it lives; the one that was installed before follows
  // it. Everything that is neither recorded nor withheld is the given computer's; panels and drawing are the
  // given ones. Borrows all of them.
  RecordingPlatform(Platform& computer, AlertPanels& alerts, Drawing& drawing, RecordingMode mode);
  ~RecordingPlatform();
  RecordingPlatform(const RecordingPlatform&) = delete;
  RecordingPlatform& operator=(const RecordingPlatform&) = delete;

  const Effects& effects() const { return effects_; }
  // Begins to record afresh.
  void forget() { effects_ = {}; }

  // From now on the pane cannot write the files at these paths, as if the disk were full.
  void refuse(std::set<std::string> paths) { refused_ = std::move(paths); }

  // Called when a person has answered a panel of the pane, before the pane acts on the answer.
  std::function<void(int answer)> answered;
  // While it is true, no panel of the pane is shown: each gets its default answer.
  bool isUnattended = false;

 private:
  struct Interfaces;
  Effects effects_;
  std::set<std::string> refused_;
  std::unique_ptr<Interfaces> interfaces_;
  Platform* before_;  // installed again at the end
};

}  // namespace norvik
