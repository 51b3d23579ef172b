// Reads the kernel's list of processes. Unlike the calls of libproc, it has those that have ended.
#include "src/adapters/apple/process_table.h"

#include <sys/sysctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <iterator>

namespace norvik {

namespace {

// Room for processes that start between the two questions.
constexpr std::size_t kSpare = 64;
constexpr int kAttempts = 4;

std::vector<kinfo_proc> allProcesses() {
  std::array<int, 3> name{CTL_KERN, KERN_PROC, KERN_PROC_ALL};
  std::vector<kinfo_proc> processes;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    std::size_t size = 0;
    if (::sysctl(name.data(), name.size(), nullptr, &size, nullptr, 0) != 0) return {};
    processes.resize(size / sizeof(kinfo_proc) + kSpare);
    size = processes.size() * sizeof(kinfo_proc);
    if (::sysctl(name.data(), name.size(), processes.data(), &size, nullptr, 0) == 0) {
      processes.resize(size / sizeof(kinfo_proc));
      return processes;
    }
    if (errno != ENOMEM) return {};
  }
  return {};
}

}  // namespace

std::vector<pid_t> privilegedChildren() {
  std::vector<pid_t> children;
  const pid_t self = ::getpid();
  for (const kinfo_proc& process : allProcesses()) {
    if (process.kp_eproc.e_ppid == self && process.kp_eproc.e_ucred.cr_uid == 0)
      children.push_back(process.kp_proc.p_pid);
  }
  std::sort(children.begin(), children.end());
  return children;
}

std::optional<pid_t> newChild(const std::vector<pid_t>& before, const std::vector<pid_t>& after) {
  std::vector<pid_t> made;
  std::set_difference(after.begin(), after.end(), before.begin(), before.end(), std::back_inserter(made));
  return made.size() == 1 ? std::optional(made.front()) : std::nullopt;
}

}  // namespace norvik
