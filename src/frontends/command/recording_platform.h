// Stands between the pane and the computer and notes what the pane does to it, so that a command can tell the
// person afterwards. It can also hold the pane back, so that a command can find out beforehand what would
// happen: the pane then believes that its files were written and its tools ran.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "src/server/mac/platform/platform.h"

namespace norvik::command {

enum class Mode {
  real,        // everything happens
  looking,     // the lock is opened and tools that only report something run; nothing is changed
  pretending,  // the lock only seems to open; nothing runs and nothing is changed
};

struct Launch {
  std::string tool;
  std::vector<std::string> arguments;
  bool reports = false;  // its output was asked for: it tells something and changes nothing
  bool refused = false;  // by the authorization service
};

// What the pane did, or believes to have done, in order.
struct Effects {
  std::vector<Launch> launches;
  std::vector<std::string> posted;  // names of notifications
  std::vector<int32_t> signalled;   // processes that were told to read their settings again
  std::vector<std::string> logged;  // lines of the system log
};

class RecordingPlatform {
 public:
  // Installs itself as the pane's computer for as long as it lives. Everything that is neither noted nor held
  // back is the given computer's; panels and drawing are the given ones. Borrows all of them.
  RecordingPlatform(Platform& computer, AlertPanels& alerts, Drawing& drawing, Mode mode);
  ~RecordingPlatform();
  RecordingPlatform(const RecordingPlatform&) = delete;
  RecordingPlatform& operator=(const RecordingPlatform&) = delete;

  const Effects& effects() const { return effects_; }

 private:
  struct Interfaces;
  Effects effects_;
  std::unique_ptr<Interfaces> interfaces_;
};

}  // namespace norvik::command
