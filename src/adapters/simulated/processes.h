// The processes of the simulated computer: which exist, and which of them the process manager lists.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "src/adapters/simulated/clock.h"
#include "src/adapters/simulated/effects.h"
#include "src/server/mac/platform/processes.h"

namespace norvik {

// A process of the logged-in user, as the process manager knows it.
struct ListedProcess {
  int32_t pid = 0;
  OSType type = 0;
  OSType creator = 0;
  std::optional<std::string> bundleIdentifier;
  // The call of the same name fails for it.
  bool failsInformation = false;
  bool failsDictionary = false;
  bool failsPid = false;
};

class ProcessTable {
 public:
  enum class State { alive, dead, notPermitted };

  // The state of the process from now on, whatever else is known of it.
  void setState(int32_t pid, State state) { states_[pid] = state; }
  // Forgets the state that was set: the process then exists if it is in the list or the pane runs in it.
  void forget(int32_t pid) { states_.erase(pid); }
  // Adds a process at the end of the process manager's list.
  void add(ListedProcess process) { listed_.push_back(std::move(process)); }
  const std::vector<ListedProcess>& listed() const { return listed_; }

  int32_t ownPid() const { return ownPid_; }
  void setOwnPid(int32_t pid) { ownPid_ = pid; }

  // The result of a signal to the process. Process 0 always exists, those below 0 never do.
  State stateOf(int32_t pid) const;
  bool exists(int32_t pid) const { return stateOf(pid) != State::dead; }

 private:
  int32_t ownPid_ = 812;
  std::map<int32_t, State> states_;
  std::vector<ListedProcess> listed_;
};

class SimulatedProcessManager : public ProcessManager {
 public:
  explicit SimulatedProcessManager(const ProcessTable& processes) : processes_(processes) {}

  OSErr GetNextProcess(ProcessSerialNumber& process) override;
  OSErr GetProcessInformation(const ProcessSerialNumber& process, ProcessInfoRec& information) override;
  std::optional<PropertyList> ProcessInformationCopyDictionary(const ProcessSerialNumber& process) override;
  OSErr GetProcessPID(const ProcessSerialNumber& process, int32_t& pid) override;

 private:
  const ListedProcess* find(const ProcessSerialNumber& process) const;

  const ProcessTable& processes_;
};

class SimulatedPosixProcesses : public PosixProcesses {
 public:
  SimulatedPosixProcesses(const ProcessTable& processes, SimulatedClock& clock, const EffectReporter& effects)
      : processes_(processes), clock_(clock), effects_(effects) {}

  KillResult kill(int32_t pid, Signal signal) override;
  int32_t getpid() override { return processes_.ownPid(); }
  void usleep(uint32_t microseconds) override;

 private:
  const ProcessTable& processes_;
  SimulatedClock& clock_;
  const EffectReporter& effects_;
};

}  // namespace norvik
