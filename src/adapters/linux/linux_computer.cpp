// Puts the parts together.
#include "src/adapters/linux/linux_computer.h"

#include <unistd.h>

#include <filesystem>

#include "src/adapters/linux/firewall.h"

namespace norvik {

namespace {

std::chrono::milliseconds atSpeed(std::chrono::duration<double> time, double speed) {
  return std::chrono::ceil<std::chrono::milliseconds>(time / speed);
}

// A tool has a different working folder, so its root must not depend on ours.
RootFolder absoluteRoot(const std::string& root) {
  if (root.empty()) return RootFolder();
  std::error_code error;
  const std::filesystem::path path = std::filesystem::absolute(root, error);
  return RootFolder(error ? root : path.lexically_normal().string());
}

std::string withoutSlash(std::string path) {
  while (path.ends_with('/')) path.pop_back();
  return path;
}

}  // namespace

LinuxComputerOptions::LinuxComputerOptions() : user(::getuid()), superUser(::geteuid() == 0) {}

LinuxComputer::LinuxComputer(const LinuxComputerOptions& options)
    : LinuxComputer(options, absoluteRoot(options.root)) {}

LinuxComputer::LinuxComputer(const LinuxComputerOptions& options, const RootFolder& root)
    : unreadFiles_(options.unreadFiles),
      tools_(root, atSpeed(kLongestReportDelay, options.speed)),
      systemRights_(options.systemRights
                        ? std::make_unique<SystemRights>(
                              tools_, PolkitAuthorization::Options{options.superUser, options.textAgent},
                              options.whileAsking)
                        : nullptr),
      locks_(root, [this](std::weak_ptr<const Descriptor> held) { tools_.keepOpen(std::move(held)); }),
      settingsFiles_(root, withoutSlash(options.stateFolder)),
      network_([root](uint16_t port) { return visibleFirewall(root, port); }),
      files(root),
      propertyLists(root, withoutSlash(options.home)),
      processManager(root, options.user),
      posix(options.speed),
      authorization(tools_, options.authorization),
      notifications(options.busAddress),
      bundles(root, options.bundleFolders),
      log(options.syslogIdent, options.logObserver),
      assertions(log),
      userState(root, withoutSlash(options.stateFolder), options.user) {}

AuthorizationService& LinuxComputer::authorizationService() {
  if (systemRights_) return systemRights_->authorization();
  return authorization;
}

LaunchedTools& LinuxComputer::launchedTools() {
  if (systemRights_) return systemRights_->lines();
  return tools_;
}

const AuthorizationRefusals& LinuxComputer::refusals() const {
  if (systemRights_) return systemRights_->authorization();
  return authorization;
}

Platform LinuxComputer::platformFor(const FrontEndInterfaces& own) {
  return {.application = own.application,
          .alerts = own.alerts,
          .workspace = own.workspace,
          .notifications = own.notifications,
          .drawing = own.drawing,
          .runLoop = own.runLoop,
          .authorization = authorizationService(),
          .files = files,
          .propertyLists = propertyLists,
          .processManager = processManager,
          .posix = own.posix,
          .host = host,
          .systemVersion = systemVersion,
          .bundles = own.bundles != nullptr ? *own.bundles : bundles,
          .log = log,
          .assertions = assertions};
}

ComputerServices LinuxComputer::services() {
  return {.locks = locks_,
          .tools = launchedTools(),
          .files = settingsFiles_,
          .ports = ports_,
          .network = network_,
          .delivery = notifications,
          .refusals = refusals(),
          .unreadFiles = unreadFiles_};
}

}  // namespace norvik
