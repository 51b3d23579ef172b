// The Process Manager's calls, looked up at each call. Its records are filled by hand: what the caller left
// in the record's other fields would be written through.
#include "src/adapters/apple/process_manager.h"

#include <ApplicationServices/ApplicationServices.h>

#include "src/adapters/apple/property_list_values.h"
#include "src/adapters/apple/system_call.h"

namespace norvik {

namespace {

::ProcessSerialNumber core(const ProcessSerialNumber& process) {
  return {process.highLongOfPSN, process.lowLongOfPSN};
}

ProcessSerialNumber own(const ::ProcessSerialNumber& process) {
  return {static_cast<uint32_t>(process.highLongOfPSN), static_cast<uint32_t>(process.lowLongOfPSN)};
}

}  // namespace

OSErr ClassicProcessManager::GetNextProcess(ProcessSerialNumber& process) {
  auto* call = systemCall<OSErr(::ProcessSerialNumber*)>("GetNextProcess");
  if (call == nullptr) return procNotFound;
  ::ProcessSerialNumber next = core(process);
  const OSErr error = call(&next);
  process = own(next);
  return error;
}

OSErr ClassicProcessManager::GetProcessInformation(const ProcessSerialNumber& process,
                                                   ProcessInfoRec& information) {
  auto* call = systemCall<OSErr(const ::ProcessSerialNumber*, ::ProcessInfoRec*)>("GetProcessInformation");
  if (call == nullptr) return procNotFound;
  const ::ProcessSerialNumber asked = core(process);
  ::ProcessInfoRec record{};
  record.processInfoLength = sizeof record;
  const OSErr error = call(&asked, &record);
  if (error != noErr) return error;
  information.processNumber = own(record.processNumber);
  information.processType = record.processType;
  information.processSignature = record.processSignature;
  return noErr;
}

std::optional<PropertyList> ClassicProcessManager::ProcessInformationCopyDictionary(
    const ProcessSerialNumber& process) {
  using Call = CFDictionaryRef(const ::ProcessSerialNumber*, UInt32);
  auto* call = systemCall<Call>("ProcessInformationCopyDictionary");
  if (call == nullptr) return std::nullopt;
  const ::ProcessSerialNumber asked = core(process);
  const Owned<CFDictionaryRef> known(
      call(&asked, static_cast<UInt32>(kProcessDictionaryIncludeAllInformationMask)));
  return known ? valueOf(known.get()) : std::nullopt;
}

OSErr ClassicProcessManager::GetProcessPID(const ProcessSerialNumber& process, int32_t& pid) {
  auto* call = systemCall<OSErr(const ::ProcessSerialNumber*, pid_t*)>("GetProcessPID");
  if (call == nullptr) return procNotFound;
  const ::ProcessSerialNumber asked = core(process);
  pid_t found = 0;
  const OSErr error = call(&asked, &found);
  if (error == noErr) pid = found;
  return error;
}

std::unique_ptr<ProcessManager> makeProcessManager() {
  if (RunningApplications::isAvailable()) return std::make_unique<RunningApplications>();
  return std::make_unique<ClassicProcessManager>();
}

}  // namespace norvik
