// The process manager over /proc. It lists only applications: a process whose executable is not in a bundle
// has neither type nor creator, and a caller may stop at the first process without them, so the list must not
// contain any.
#pragma once

#include <sys/types.h>

#include <string>

#include "src/adapters/posix/root_folder.h"
#include "src/server/mac/platform/processes.h"

namespace norvik {

class LinuxProcessManager : public ProcessManager {
 public:
  // Lists the processes of `user` whose executable is below the root.
  LinuxProcessManager(const RootFolder& root, uid_t user);

  OSErr GetNextProcess(ProcessSerialNumber& process) override;
  OSErr GetProcessInformation(const ProcessSerialNumber& process, ProcessInfoRec& information) override;
  std::optional<PropertyList> ProcessInformationCopyDictionary(const ProcessSerialNumber& process) override;
  OSErr GetProcessPID(const ProcessSerialNumber& process, int32_t& pid) override;

 private:
  // The bundle of a process of the user; empty if the process is gone, another user's, or not in a bundle.
  std::string bundleOf(uint32_t pid) const;
  std::string bundleOf(const ProcessSerialNumber& process) const;

  RootFolder root_;
  uid_t user_;
};

}  // namespace norvik
