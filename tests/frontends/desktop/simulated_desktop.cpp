// The simulated world that the desktop's tests begin with.
#include "tests/frontends/desktop/simulated_desktop.h"

#include <algorithm>

#include "src/adapters/property_lists/codec.h"

namespace norvik::desktop {

namespace {

PropertyList service(int64_t port) {
  return PropertyList::Dictionary{{"PortNumber", port}, {"Disabled", false}, {"SoundOutputEnabled", false}};
}

std::string serverConfiguration() {
  return encodeXmlPropertyList(PropertyList::Dictionary{{"SingleUser", true},
                                                        {"ActionOnConnect", int64_t{0}},
                                                        {"NVKService", service(4074)},
                                                        {"RDPService", service(3390)}});
}

std::string agentConfiguration() {
  return encodeXmlPropertyList(
      PropertyList::Dictionary{{"ImageUseDefaults", false}, {"ImageQualityMode", int64_t{1}}});
}

}  // namespace

SimulatedDesktop::SimulatedDesktop()
    : platform_{application,
                alerts,
                computer.workspace,
                computer.notifications,
                drawing,
                runLoop,
                computer.authorization,
                computer.files,
                computer.propertyLists,
                computer.processManager,
                processes,
                computer.host,
                computer.systemVersion,
                computer.bundles,
                computer.log,
                computer.assertions} {
  computer.fileSystem.addDirectory("/etc/norvik");
  computer.fileSystem.put("/etc/norvik/svr.cfg", serverConfiguration());
  computer.fileSystem.put("/etc/launchd.conf", "limit maxfiles 1024 2048\n");
  computer.fileSystem.put(computer.fileSystem.home() + "/Library/Preferences/com.veltrane.nvkagent.plist",
                          agentConfiguration());
  computer.tools.setKernelValue("kern.maxfiles", "12288");
  computer.tools.setKernelValue("kern.maxfilesperproc", "10240");
  computer.authorization.setSilentGranted(false);
  computer.effects.setSink([this](EffectKind kind, const std::string& line) {
    if (kind == EffectKind::launch) launches.push_back(line);
    if (kind == EffectKind::openUrl) opened.push_back(line);
    if (kind == EffectKind::authorization) rememberGrant(line);
  });
  installPlatform(&platform_);
}

SimulatedDesktop::~SimulatedDesktop() {
  installPlatform(nullptr);
}

// As on a real computer, a check that asks nobody finds open what a person opened, until it is given up. An
// activation may come at any time, also late, and makes such a check.
void SimulatedDesktop::rememberGrant(const std::string& line) {
  if (line.ends_with("InteractionAllowed -> granted")) computer.authorization.setSilentGranted(true);
  if (line.starts_with("authorization free")) computer.authorization.setSilentGranted(false);
}

bool SimulatedDesktop::launched(const std::string& words) const {
  return std::ranges::any_of(
      launches, [&words](const std::string& line) { return line.find(words) != std::string::npos; });
}

}  // namespace norvik::desktop
