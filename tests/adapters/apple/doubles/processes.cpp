// The kernel's list of processes, the waiting for them, the Process Manager and Gestalt.
#include <ApplicationServices/ApplicationServices.h>
#include <dirent.h>
#include <dlfcn.h>
#include <sys/sysctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>

#include "tests/adapters/apple/doubles/doubles.h"
#include "tests/adapters/apple/doubles/objects.h"

namespace norvik::doubles {

namespace {

constexpr uid_t kUser = 501;

kinfo_proc entry(pid_t pid, pid_t parent, uid_t user) {
  kinfo_proc process{};
  process.kp_proc.p_pid = pid;
  process.kp_eproc.e_ppid = parent;
  process.kp_eproc.e_ucred.cr_uid = user;
  return process;
}

// The children of this process, with those that have ended and nobody has waited for, and some of others.
std::vector<kinfo_proc> allProcesses() {
  std::vector<kinfo_proc> found{entry(1, 0, 0), entry(2, 1, 0), entry(3, 1, kUser)};
  const std::unique_ptr<DIR, int (*)(DIR*)> threads(::opendir("/proc/self/task"), &::closedir);
  while (const dirent* thread = ::readdir(threads.get())) {
    std::ifstream children(std::string("/proc/self/task/") + thread->d_name + "/children");
    for (pid_t pid = 0; children >> pid;)
      found.push_back(entry(pid, ::getpid(), mac().launched.count(pid) > 0 ? 0 : kUser));
  }
  return found;
}

int questions = 0;

const Application* applicationAt(const ProcessSerialNumber* process) {
  const auto& applications = mac().applications;
  const std::size_t place = process->lowLongOfPSN;
  const bool exists = process->highLongOfPSN == 0 && place > 0 && place <= applications.size();
  return exists ? &applications[place - 1] : nullptr;
}

OSType code(const std::string& text) {
  OSType value = 0;
  for (const char character : text) value = value << 8 | static_cast<unsigned char>(character);
  return value;
}

}  // namespace

}  // namespace norvik::doubles

using namespace norvik::doubles;

extern "C" {

// Between the two questions a process starts now and then, so that the room does not suffice.
int sysctl(int* name, unsigned int namelen, void* oldp, size_t* oldlenp, void* newp, size_t) {
  const bool isList = namelen == 3 && name[0] == CTL_KERN && name[1] == KERN_PROC && name[2] == KERN_PROC_ALL;
  if (!isList || newp != nullptr) violate("another question to the kernel");
  errno = EPERM;
  const std::lock_guard lock(guard());
  if (mac().hidesProcesses) return -1;
  const std::vector<kinfo_proc> processes = allProcesses();
  const std::size_t size = processes.size() * sizeof(kinfo_proc);
  const bool isShort = oldp != nullptr && (*oldlenp < size || ++questions % 7 == 0);
  if (isShort) {
    errno = ENOMEM;
    return -1;
  }
  if (oldp != nullptr) std::memcpy(oldp, processes.data(), size);
  *oldlenp = size;
  return 0;
}

// The system's, which notes whom somebody waited for. To wait for any child takes the host's.
pid_t waitpid(pid_t pid, int* status, int options) {
  using Call = pid_t(pid_t, int*, int);
  static auto* const real = reinterpret_cast<Call*>(::dlsym(RTLD_NEXT, "waitpid"));
  if (pid <= 0) violate("waiting for any child");
  const pid_t taken = real(pid, status, options);
  const std::lock_guard lock(guard());
  if (taken > 0) mac().launched.erase(taken);
  return taken;
}

// After the last, the number is that of no process, so that the next call starts anew.
OSErr GetNextProcess(ProcessSerialNumber* process) {
  constexpr OSErr kNoMore = -600;
  ProcessSerialNumber next{0, process->lowLongOfPSN + 1};
  const bool exists = applicationAt(&next) != nullptr;
  *process = exists ? next : ProcessSerialNumber{0, 0};
  return exists ? OSErr{0} : kNoMore;
}

OSErr GetProcessInformation(const ProcessSerialNumber* process, ProcessInfoRec* record) {
  constexpr OSErr kNotFound = -600;
  constexpr OSErr kBadParameter = -50;
  if (record->processName != nullptr || record->processAppRef != nullptr)
    violate("a pointer that is written through");
  if (record->processInfoLength != sizeof *record) return kBadParameter;
  const Application* application = applicationAt(process);
  if (application == nullptr) return kNotFound;
  record->processNumber = *process;
  record->processType = code(application->type);
  record->processSignature = code(application->creator);
  return 0;
}

CFDictionaryRef ProcessInformationCopyDictionary(const ProcessSerialNumber* process, UInt32 mask) {
  if (mask != static_cast<UInt32>(kProcessDictionaryIncludeAllInformationMask)) violate("another mask");
  const Application* application = applicationAt(process);
  if (application == nullptr) return nullptr;
  auto known = std::make_unique<Map>();
  known->values.emplace_back(keep(std::make_unique<Text>("CFBundleIdentifier")),
                             keep(std::make_unique<Text>(application->identifier)));
  known->values.emplace_back(
      keep(std::make_unique<Text>("pid")),
      keep(std::make_unique<Number>(false, application->pid, static_cast<uint64_t>(application->pid))));
  return static_cast<CFDictionaryRef>(keep(std::move(known)));
}

OSErr GetProcessPID(const ProcessSerialNumber* process, pid_t* pid) {
  constexpr OSErr kNotFound = -600;
  const Application* application = applicationAt(process);
  if (application == nullptr) return kNotFound;
  *pid = application->pid;
  return 0;
}

// Of a system that is older than what follows it.
OSErr Gestalt(OSType selector, SInt32* response) {
  constexpr OSErr kUndefined = -5551;
  if (selector == code("sys1")) *response = 10;
  if (selector == code("sys2")) *response = 9;
  if (selector == code("sys3")) *response = 5;
  return selector == code("sys1") || selector == code("sys2") || selector == code("sys3") ? OSErr{0}
                                                                                          : kUndefined;
}

}  // extern "C"
