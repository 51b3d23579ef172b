// A process's serial number is its place in the list, from 1.
#include "src/adapters/simulated/processes.h"

#include <algorithm>
#include <cstddef>

namespace norvik {

ProcessTable::State ProcessTable::stateOf(int32_t pid) const {
  if (pid <= 0) return pid == 0 ? State::alive : State::dead;
  if (const auto known = states_.find(pid); known != states_.end()) return known->second;
  const bool isListed = std::any_of(listed_.begin(), listed_.end(),
                                    [pid](const ListedProcess& process) { return process.pid == pid; });
  return isListed || pid == ownPid_ ? State::alive : State::dead;
}

const ListedProcess* SimulatedProcessManager::find(const ProcessSerialNumber& process) const {
  const auto& listed = processes_.listed();
  const std::size_t place = process.lowLongOfPSN;
  return process.highLongOfPSN == 0 && place > 0 && place <= listed.size() ? &listed[place - 1] : nullptr;
}

OSErr SimulatedProcessManager::GetNextProcess(ProcessSerialNumber& process) {
  const ProcessSerialNumber next{0, process.lowLongOfPSN + 1};
  const bool exists = find(next) != nullptr;
  process = exists ? next : ProcessSerialNumber{};
  return exists ? noErr : procNotFound;
}

OSErr SimulatedProcessManager::GetProcessInformation(const ProcessSerialNumber& process,
                                                     ProcessInfoRec& information) {
  const ListedProcess* listed = find(process);
  if (listed == nullptr || listed->failsInformation) return procNotFound;
  information.processNumber = process;
  information.processType = listed->type;
  information.processSignature = listed->creator;
  return noErr;
}

std::optional<PropertyList> SimulatedProcessManager::ProcessInformationCopyDictionary(
    const ProcessSerialNumber& process) {
  const ListedProcess* listed = find(process);
  if (listed == nullptr || listed->failsDictionary) return std::nullopt;
  PropertyList::Dictionary dictionary;
  if (listed->bundleIdentifier) dictionary.emplace("CFBundleIdentifier", *listed->bundleIdentifier);
  return dictionary;
}

OSErr SimulatedProcessManager::GetProcessPID(const ProcessSerialNumber& process, int32_t& pid) {
  const ListedProcess* listed = find(process);
  if (listed == nullptr || listed->failsPid) return procNotFound;
  pid = listed->pid;
  return noErr;
}

KillResult SimulatedPosixProcesses::kill(int32_t pid, Signal signal) {
  if (signal == Signal::user2)
    effects_.report(EffectKind::signal, "signal " + std::to_string(pid) + " SIGUSR2");
  switch (processes_.stateOf(pid)) {
    case ProcessTable::State::dead:
      return KillResult::noSuchProcess;
    case ProcessTable::State::notPermitted:
      return KillResult::otherError;
    case ProcessTable::State::alive:
      break;
  }
  return KillResult::sent;
}

void SimulatedPosixProcesses::usleep(uint32_t microseconds) {
  effects_.report(EffectKind::sleep, "sleep " + std::to_string(microseconds));
  clock_.sleep(microseconds);
}

}  // namespace norvik
