// Platform interface to the process manager, which lists the logged-in user's processes, and to the process
// services of POSIX. Called on the main thread only; only usleep blocks.
#pragma once

#include <cstdint>
#include <optional>

#include "src/server/mac/platform/property_list.h"

namespace norvik {

using OSErr = int16_t;
inline constexpr OSErr noErr = 0;
inline constexpr OSErr procNotFound = -600;

// A code of four characters, the first in the highest byte: fourCharCode("APPL").
using OSType = uint32_t;
constexpr OSType fourCharCode(const char (&text)[5]) {
  OSType code = 0;
  for (int i = 0; i < 4; ++i) code = code << 8 | static_cast<unsigned char>(text[i]);
  return code;
}

inline constexpr uint32_t kNoProcess = 0;

struct ProcessSerialNumber {
  uint32_t highLongOfPSN = 0;
  uint32_t lowLongOfPSN = kNoProcess;
};

struct ProcessInfoRec {
  uint32_t processInfoLength = 0;
  const char* processName = nullptr;    // not filled if null
  const void* processAppRef = nullptr;  // not filled if null
  ProcessSerialNumber processNumber;
  OSType processType = 0;
  OSType processSignature = 0;
};

class ProcessManager {
 public:
  virtual ~ProcessManager() = default;

  // Advances `process` to the next one of the logged-in user's applications; kNoProcess starts from the
  // first. procNotFound after the last, with kNoProcess in `process`: another call starts anew.
  virtual OSErr GetNextProcess(ProcessSerialNumber& process) = 0;
  // Fills type, signature and number, whatever the record's length says; an error for a process that is gone
  // or that belongs to no bundle.
  virtual OSErr GetProcessInformation(const ProcessSerialNumber& process, ProcessInfoRec& information) = 0;
  // All that is known of the process, "CFBundleIdentifier" included if it has one; nothing on failure.
  virtual std::optional<PropertyList> ProcessInformationCopyDictionary(
      const ProcessSerialNumber& process) = 0;
  // The process id; an error if the process is gone.
  virtual OSErr GetProcessPID(const ProcessSerialNumber& process, int32_t& pid) = 0;
};

enum class Signal {
  none,   // 0: only asks whether the process exists
  user2,  // SIGUSR2
};

enum class KillResult {
  sent,
  noSuchProcess,  // ESRCH
  otherError,     // EPERM and the like: the process exists
};

class PosixProcesses {
 public:
  virtual ~PosixProcesses() = default;

  // Sends a signal to a process by its id. An id is never taken for more than one process: 0 always exists
  // and is not to be signalled, one below 0 does not exist.
  virtual KillResult kill(int32_t pid, Signal signal) = 0;
  // The id of the process that the pane runs in.
  virtual int32_t getpid() = 0;
  // Blocks for that many microseconds.
  virtual void usleep(uint32_t microseconds) = 0;
};

}  // namespace norvik
