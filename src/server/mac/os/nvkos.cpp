// System and bundle versions, asked of the installed computer if there is one.
#include "src/server/mac/os/nvkos.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "src/server/mac/platform/platform.h"

int32_t __nvkos_sys_ver[4] = {0, 0, 0, 0};
const char __nvkos_sys_name[] = "MACOSX";

namespace {

enum Slot { kMajor, kMinor, kBugfix, kFilled };

struct RunningVersion {
  int32_t major;
  int32_t minor;
};

RunningVersion runningVersion() {
  if (__nvkos_sys_ver[kFilled] == 0) nvkos_update_sysver();
  return {__nvkos_sys_ver[kMajor], __nvkos_sys_ver[kMinor]};
}

void store(int32_t* target, int32_t value) {
  if (target != nullptr) *target = value;
}

// The first three pieces of a text split at every "."; a missing piece is 0.
std::array<int32_t, 3> versionParts(std::string_view text) {
  std::array<int32_t, 3> parts{};
  for (int32_t& part : parts) {
    const std::size_t dot = text.find('.');
    part = norvik::clampedLeadingInteger(text.substr(0, dot));
    if (dot == std::string_view::npos) break;
    text.remove_prefix(dot + 1);
  }
  return parts;
}

std::optional<std::string> versionText(const char* identifier) {
  const norvik::Platform* computer = norvik::installedPlatform();
  if (computer == nullptr) return std::nullopt;
  norvik::Bundles& bundles = computer->bundles;
  const norvik::CFBundleRef bundle = identifier != nullptr
                                         ? bundles.CFBundleGetBundleWithIdentifier(identifier)
                                         : bundles.CFBundleGetMainBundle();
  if (bundle == nullptr) return std::nullopt;
  auto text = bundles.CFBundleGetValueForInfoDictionaryKey(bundle, "CFBundleShortVersionString");
  if (!text) text = bundles.CFBundleGetValueForInfoDictionaryKey(bundle, "CFBundleVersion");
  return text;
}

}  // namespace

int32_t nvkos_update_sysver() {
  // Set first, so that a system whose queries fail is not queried again and again.
  __nvkos_sys_ver[kFilled] = 1;
  const norvik::Platform* computer = norvik::installedPlatform();
  if (computer == nullptr) return norvik::gestaltUndefSelectorErr;
  norvik::SystemVersion& system = computer->systemVersion;
  system.Gestalt(norvik::fourCharCode("sys1"), __nvkos_sys_ver[kMajor]);
  system.Gestalt(norvik::fourCharCode("sys2"), __nvkos_sys_ver[kMinor]);
  return system.Gestalt(norvik::fourCharCode("sys3"), __nvkos_sys_ver[kBugfix]);
}

int32_t NVKOS_SystemVersion(int32_t* major, int32_t* minor, int32_t* bugfix) {
  const RunningVersion running = runningVersion();
  store(major, running.major);
  store(minor, running.minor);
  store(bugfix, __nvkos_sys_ver[kBugfix]);
  return 1;
}

const char* NVKOS_SysName() {
  return __nvkos_sys_name;
}

int32_t NVKOS_SysVerEqualOrGreater(int32_t major, int32_t minor) {
  const RunningVersion running = runningVersion();
  return (running.major == major && running.minor >= minor) || running.major > major;
}

int32_t NVKOS_SysVerEqual(int32_t major, int32_t minor) {
  const RunningVersion running = runningVersion();
  return running.major == major && running.minor == minor;
}

int32_t NVKOS_SysVerGreater(int32_t major, int32_t minor) {
  const RunningVersion running = runningVersion();
  return (running.major == major && running.minor > minor) || running.major > major;
}

int32_t NVKOS_BundleVersion(const char* identifier, int32_t* major, int32_t* minor, int32_t* bugfix) {
  const auto text = versionText(identifier);
  if (!text) return 0;
  const auto parts = versionParts(*text);
  store(major, parts[kMajor]);
  store(minor, parts[kMinor]);
  store(bugfix, parts[kBugfix]);
  return 1;
}
