// Puts the parts together.
#include "src/adapters/simulated/simulated_computer.h"

namespace norvik {

SimulatedComputer::SimulatedComputer()
    : service(fileSystem, processes, clock),
      tools(fileSystem, service, clock),
      files(fileSystem, fileFaults, effects),
      propertyLists(fileSystem, fileFaults, effects),
      processManager(processes),
      posix(processes, clock, effects),
      authorization(tools, files, clock, effects),
      alerts(effects),
      workspace(effects),
      notifications(effects),
      drawing(effects),
      runLoop(clock, effects),
      log(effects),
      locks(clock, tools),
      settingsFiles(fileSystem, fileFaults, clock),
      userState(fileSystem, fileFaults, clock),
      ports(fileSystem, service, processes),
      network(host, ports),
      platform_{.application = application,
                .alerts = alerts,
                .workspace = workspace,
                .notifications = notifications,
                .drawing = drawing,
                .runLoop = runLoop,
                .authorization = authorization,
                .files = files,
                .propertyLists = propertyLists,
                .processManager = processManager,
                .posix = posix,
                .host = host,
                .systemVersion = systemVersion,
                .bundles = bundles,
                .log = log,
                .assertions = assertions} {}

ComputerServices SimulatedComputer::services() {
  return {.locks = locks,
          .tools = tools,
          .files = settingsFiles,
          .ports = ports,
          .network = network,
          .delivery = notifications,
          .refusals = authorization};
}

}  // namespace norvik
