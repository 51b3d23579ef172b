// Puts the parts together.
#include "src/adapters/apple/apple_computer.h"

#include "src/adapters/apple/home.h"

namespace norvik {

AppleComputerOptions appleOptions() {
  AppleComputerOptions options;
  options.home = homeFolder();
  options.stateFolder = options.home + "/Library/Application Support/Norvik";
  return options;
}

AppleComputer::AppleComputer(const AppleComputerOptions& options)
    : AppleComputer(options, RootFolder(options.root)) {}

AppleComputer::AppleComputer(const AppleComputerOptions& options, const RootFolder& root)
    : tools_(options.longestReportDelay, options.longestEnd),
      locks_(root, [this](std::weak_ptr<const Descriptor> held) { tools_.keepOpen(std::move(held)); }),
      settingsFiles_(root, options.stateFolder),
      processManager_(makeProcessManager()),
      authorization(root, tools_),
      files(root),
      propertyLists(root, options.home),
      posix(1),
      bundles(options.paneIdentifier),
      log(options.logObserver),
      assertions(log) {}

Platform AppleComputer::platform() {
  return {.application = application,
          .alerts = alerts,
          .workspace = workspace,
          .notifications = notifications,
          .drawing = drawing,
          .runLoop = runLoop,
          .authorization = authorization,
          .files = files,
          .propertyLists = propertyLists,
          .processManager = *processManager_,
          .posix = posix,
          .host = host,
          .systemVersion = systemVersion,
          .bundles = bundles,
          .log = log,
          .assertions = assertions};
}

ComputerServices AppleComputer::services() {
  return {
      .locks = locks_, .tools = tools_, .files = settingsFiles_, .ports = ports_, .delivery = notifications};
}

}  // namespace norvik
