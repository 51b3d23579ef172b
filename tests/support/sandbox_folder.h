// A fresh folder on the disk with what a test puts into it, gone with the object, and the processes that were
// started in it, ended with the object.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace norvik {

class SandboxFolder {
 public:
  SandboxFolder();
  ~SandboxFolder();
  SandboxFolder(const SandboxFolder&) = delete;
  SandboxFolder& operator=(const SandboxFolder&) = delete;

  // Without a slash at its end.
  const std::string& path() const { return path_; }
  // Where the computer's path lies.
  std::string onDisk(const std::string& path) const { return path_ + path; }

  // Makes the folders above the file too.
  void put(const std::string& path, const std::string& bytes);
  std::optional<std::string> read(const std::string& path) const;
  // A program that a shell runs, finding the folder in NORVIK_ROOT.
  void putScript(const std::string& path, const std::string& commands);
  // A bundle at the path that runs as the system's `sleep`; the executable's path.
  std::string putApplication(const std::string& bundle, const std::string& packageInfo,
                             const std::string& identifier);

  // Starts a program on the disk with its arguments; its process id.
  pid_t start(const std::vector<std::string>& words, std::optional<uid_t> user = std::nullopt);
  void end(pid_t pid);
  // The signal that ended the process; 0 where it exited, nothing where it still runs within the limit.
  std::optional<int> endedBy(pid_t pid, std::chrono::milliseconds limit = std::chrono::seconds(5));
  // Whether it has not ended within a moment.
  bool stillRuns(pid_t pid) { return !endedBy(pid, std::chrono::milliseconds(100)); }

  // An address in the folder, and a message bus there.
  std::string busAddress() const { return "unix:path=" + path_ + "/bus"; }
  void startBus();

 private:
  std::string path_;
  std::vector<pid_t> running_;
  std::map<pid_t, int> statuses_;  // of those that have ended
};

// Looks again and again until the condition holds; false when it never did within the limit.
bool eventually(const std::function<bool()>& condition,
                std::chrono::milliseconds limit = std::chrono::seconds(5));

}  // namespace norvik
