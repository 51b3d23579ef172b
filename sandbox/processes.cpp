// Processes, from /proc.
#include "sandbox/processes.h"

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <sstream>
#include <tuple>

#include "sandbox/waits.h"

namespace norvik::sandbox {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kFileTools[] = {"/bin/mv", "/bin/chmod", "/usr/sbin/chown", "/usr/bin/defaults"};

// The path of a process's program on the sandbox's computer; empty for a process outside the sandbox.
std::string programOf(const Root& root, const fs::path& process) {
  std::error_code error;
  std::string program = fs::read_symlink(process / "exe", error);
  // With one slash at the end, also where the root is the computer's own.
  const std::string prefix = root.folder() / "";
  if (error || !program.starts_with(prefix)) return {};
  constexpr std::string_view kDeleted = " (deleted)";
  if (program.ends_with(kDeleted)) program.resize(program.size() - kDeleted.size());
  return program.substr(prefix.size() - 1);
}

// The name of the program, in parentheses, may contain anything; the fields are counted from its end.
uint64_t startTimeOf(const fs::path& process) {
  const std::string stat = readFile(process / "stat").value_or("");
  const std::size_t name = stat.rfind(')');
  if (name == std::string::npos) return 0;
  constexpr int kFieldsBetween = 19;
  std::istringstream fields(stat.substr(name + 1));
  std::string skipped;
  for (int i = 0; i < kFieldsBetween; ++i) fields >> skipped;
  uint64_t time = 0;
  fields >> time;
  return time;
}

auto orderOf(const Process& process) {
  return std::make_tuple(process.startTime, process.pid);
}

}  // namespace

std::vector<Process> processesOf(const Root& root) {
  std::vector<Process> processes;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator("/proc", error)) {
    const std::string name = entry.path().filename();
    pid_t pid = 0;
    const auto [end, failure] = std::from_chars(name.data(), name.data() + name.size(), pid);
    if (failure != std::errc{} || *end != '\0' || pid == getpid()) continue;
    const std::string program = programOf(root, entry.path());
    if (!program.empty()) processes.push_back({pid, program, startTimeOf(entry.path())});
  }
  std::sort(processes.begin(), processes.end(),
            [](const Process& a, const Process& b) { return orderOf(a) < orderOf(b); });
  return processes;
}

std::optional<pid_t> runningDaemon(const Root& root) {
  const auto text = readFile(root.inside(kPidFile));
  if (!text) return std::nullopt;
  pid_t pid = 0;
  std::from_chars(text->data(), text->data() + text->size(), pid);
  if (pid <= 0 || programOf(root, fs::path("/proc") / std::to_string(pid)) != kServerDaemon)
    return std::nullopt;
  return pid;
}

void waitForEarlierFileTools(const Root& root) {
  constexpr std::chrono::seconds kLimit(5);
  Process self{getpid(), {}, startTimeOf("/proc/self")};
  waitUntil(kLimit, [&] {
    const std::vector<Process> others = processesOf(root);
    return std::none_of(others.begin(), others.end(), [&](const Process& other) {
      return orderOf(other) < orderOf(self) &&
             std::find(std::begin(kFileTools), std::end(kFileTools), other.program) != std::end(kFileTools);
    });
  });
}

}  // namespace norvik::sandbox
