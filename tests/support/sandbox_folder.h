// A folder with the folders of a computer in it, where nothing runs but what a test starts.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/program.h"
#include "tests/support/temporary_folder.h"

namespace norvik {

// Paths are the computer's and begin with a slash, but for those on the disk.
class SandboxFolder {
 public:
  // Makes the folder, which every user may enter.
  SandboxFolder();
  // Ends the programs that were started and removes the folder, as TemporaryFolder does.
  ~SandboxFolder() = default;
  SandboxFolder(const SandboxFolder&) = delete;
  SandboxFolder& operator=(const SandboxFolder&) = delete;

  // On the disk, without a slash at its end.
  const std::string& path() const { return folder_.path().native(); }
  // The path on the disk of one of the computer's.
  std::string onDisk(const std::string& path) const { return folder_.path().native() + path; }

  // Writes a file, and makes the folders above it.
  void put(const std::string& path, const std::string& bytes);
  // The bytes of a file; nothing where it cannot be read.
  std::optional<std::string> read(const std::string& path) const;
  // Writes a program of shell commands. It finds the folder in NORVIK_ROOT where its starter sets that.
  void putScript(const std::string& path, const std::string& commands);
  // Makes a bundle at the path with an executable that runs as the system's `sleep`. Returns the executable's
  // path.
  std::string putApplication(const std::string& bundle, const std::string& packageInfo,
                             const std::string& identifier);

  // Starts a program on the disk with its arguments, as another user where one is given; its process id.
  pid_t start(const Words& words, std::optional<uid_t> user = std::nullopt);
  // Ends a program that was started; does nothing where it has ended.
  void end(pid_t pid);
  // The signal that ended a program that was started: 0 where it exited, nothing where it still runs after
  // the limit.
  std::optional<int> endedBy(pid_t pid, std::chrono::milliseconds limit = kPatience);
  // Whether it has not ended within a tenth of a second.
  bool stillRuns(pid_t pid) { return !endedBy(pid, std::chrono::milliseconds(100)); }

  // An address in the folder.
  std::string busAddress() const { return "unix:path=" + onDisk("/bus"); }
  // Starts a message bus at that address, and returns when it takes connections.
  void startBus();

 private:
  TemporaryFolder folder_;
  std::map<pid_t, RunningProgram> programs_;
};

}  // namespace norvik
