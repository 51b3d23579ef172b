// A serial number is the process id in its low half. Nothing is kept between calls: each one reads /proc
// anew.
#include "src/adapters/linux/process_manager.h"

#include <stdlib.h>

#include <charconv>
#include <memory>

#include "src/adapters/linux/bundle_folder.h"
#include "src/adapters/linux/process_folder.h"
#include "src/adapters/posix/descriptors.h"

namespace norvik {

namespace {

constexpr std::size_t kStatusLimit = 65536;

// /proc names executables by their real paths, so the root is compared as one.
RootFolder real(const RootFolder& root) {
  const std::unique_ptr<char, decltype(&::free)> path(::realpath(root.folder().c_str(), nullptr), &::free);
  return path ? RootFolder(path.get()) : root;
}

// The real user of a process, from its line "Uid:\treal\teffective...".
std::optional<uid_t> userOf(uint32_t pid) {
  const std::optional<std::string> status = readRegularFile(processFile(pid, "status"), kStatusLimit);
  constexpr std::string_view kLabel = "\nUid:\t";
  const std::size_t found = status ? status->find(kLabel) : std::string::npos;
  if (found == std::string::npos) return std::nullopt;
  uid_t user = 0;
  const char* digits = status->data() + found + kLabel.size();
  if (std::from_chars(digits, status->data() + status->size(), user).ec != std::errc()) return std::nullopt;
  return user;
}

// Empty for a process that is gone, a zombie, or one that we may not inspect. A program that was replaced
// while it runs has " (deleted)" after its name, which does not matter: only its folders count.
std::string executableOf(uint32_t pid) {
  return linkTarget(processFile(pid, "exe"));
}

std::string codeText(OSType code) {
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8) text.push_back(static_cast<char>(code >> shift & 0xff));
  return text;
}

}  // namespace

LinuxProcessManager::LinuxProcessManager(const RootFolder& root, uid_t user)
    : root_(real(root)), user_(user) {}

std::string LinuxProcessManager::bundleOf(uint32_t pid) const {
  if (userOf(pid) != user_) return {};
  const std::string executable = executableOf(pid);
  return root_.holds(executable) ? applicationAbove(executable) : std::string();
}

std::string LinuxProcessManager::bundleOf(const ProcessSerialNumber& process) const {
  return process.highLongOfPSN == 0 ? bundleOf(process.lowLongOfPSN) : std::string();
}

OSErr LinuxProcessManager::GetNextProcess(ProcessSerialNumber& process) {
  for (const uint32_t pid : processesIn(kProcessFolder)) {
    if (pid <= process.lowLongOfPSN || bundleOf(pid).empty()) continue;
    process = {.highLongOfPSN = 0, .lowLongOfPSN = pid};
    return noErr;
  }
  process = {};
  return procNotFound;
}

OSErr LinuxProcessManager::GetProcessInformation(const ProcessSerialNumber& process,
                                                 ProcessInfoRec& information) {
  const std::string bundle = bundleOf(process);
  if (bundle.empty()) return procNotFound;
  const PackageCodes codes = packageCodes(bundle);
  information.processNumber = process;
  information.processType = codes.type;
  information.processSignature = codes.creator;
  return noErr;
}

std::optional<PropertyList> LinuxProcessManager::ProcessInformationCopyDictionary(
    const ProcessSerialNumber& process) {
  const std::string bundle = bundleOf(process);
  if (bundle.empty()) return std::nullopt;
  const PackageCodes codes = packageCodes(bundle);
  PropertyList::Dictionary known{
      {"pid", PropertyList(static_cast<int64_t>(process.lowLongOfPSN))},
      {"BundlePath", PropertyList(root_.onComputer(bundle))},
      {"FileType", PropertyList(codeText(codes.type))},
      {"FileCreator", PropertyList(codeText(codes.creator))},
  };
  const std::optional<PropertyList> info = infoDictionary(bundle);
  for (const char* key : {"CFBundleIdentifier", "CFBundleName", "CFBundleExecutable"}) {
    const PropertyList* value = info ? info->find(key) : nullptr;
    if (value != nullptr) known.emplace(key, *value);
  }
  return PropertyList(std::move(known));
}

OSErr LinuxProcessManager::GetProcessPID(const ProcessSerialNumber& process, int32_t& pid) {
  if (bundleOf(process).empty()) return procNotFound;
  pid = static_cast<int32_t>(process.lowLongOfPSN);
  return noErr;
}

}  // namespace norvik
