// Lies between the pane and the computer and records what the pane does to it, so that a command can report
// it. It can also withhold all of it, so that a command can find out beforehand what would happen: the pane
// then believes that its files were written and its tools ran.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
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

// What the pane did, or believes to have done, in order.
struct Effects {
  std::vector<Launch> launches;
  std::vector<std::string> posted;     // names of notifications
  std::vector<int32_t> signalled;      // processes that were asked to read their settings again
  std::vector<std::string> unwritten;  // paths of files that could not be written whole
  std::vector<std::string> logged;     // lines of the system log
};

class RecordingPlatform {
 public:
  // Installs itself as the pane's computer for as long as it lives; the one that was installed before follows it. Everything that is neither recorded nor
  // withheld is the given computer's; panels and drawing are the given ones. Borrows all of them.
  RecordingPlatform(Platform& computer, AlertPanels& alerts, Drawing& drawing, RecordingMode mode);
  ~RecordingPlatform();
  RecordingPlatform(const RecordingPlatform&) = delete;
  RecordingPlatform& operator=(const RecordingPlatform&) = delete;

  const Effects& effects() const { return effects_; }

 private:
  struct Interfaces;
  Effects effects_;
  std::unique_ptr<Interfaces> interfaces_;
  Platform* before_;  // installed again at the end
};

}  // namespace norvik
