// The applications of the logged-in user's session. The Process Manager is deprecated, and
// NSRunningApplication follows it: that is used where the system has it.
#pragma once

#include <memory>

#include "src/server/mac/platform/processes.h"

namespace norvik {

// By NSRunningApplication. A serial number is the process id in its low half. The list is brought up to date
// only while the main run loop runs. An application outside of a bundle is left out.
class RunningApplications : public ProcessManager {
 public:
  static bool isAvailable();

  OSErr GetNextProcess(ProcessSerialNumber& process) override;
  OSErr GetProcessInformation(const ProcessSerialNumber& process, ProcessInfoRec& information) override;
  std::optional<PropertyList> ProcessInformationCopyDictionary(const ProcessSerialNumber& process) override;
  OSErr GetProcessPID(const ProcessSerialNumber& process, int32_t& pid) override;
};

// By the Process Manager. Nothing is listed where the system has none any more.
class ClassicProcessManager : public ProcessManager {
 public:
  OSErr GetNextProcess(ProcessSerialNumber& process) override;
  OSErr GetProcessInformation(const ProcessSerialNumber& process, ProcessInfoRec& information) override;
  std::optional<PropertyList> ProcessInformationCopyDictionary(const ProcessSerialNumber& process) override;
  OSErr GetProcessPID(const ProcessSerialNumber& process, int32_t& pid) override;
};

// The one that this system has.
std::unique_ptr<ProcessManager> makeProcessManager();

}  // namespace norvik
