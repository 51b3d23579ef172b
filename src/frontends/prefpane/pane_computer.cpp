// The host application's platform interfaces, and the computer's for all others.
//
// Property lists and the host's addresses are the computer's too, although the toolkit has both: GNUstep's
// reader turns dates into texts and cuts numbers beyond 63 bits, and other people's values must survive a
// save; and it knows no address but 127.0.0.1.
#include "src/frontends/prefpane/pane_computer.h"

#include <cstdlib>

#include "src/frontends/prefpane/input.h"
#include "src/frontends/shared/change/stored_files.h"
#include "src/frontends/shared/checks/port_in_use.h"

namespace norvik::prefpane {

namespace {

LinuxComputerOptions chosenOptions() {
  const char* root = std::getenv("NORVIK_ROOT");
  return root != nullptr && *root != '\0' ? sandboxOptions(root) : systemOptions();
}

constexpr double kBetweenLooks = 0.02;  // seconds for which windows are drawn before the answer is looked for

// Windows are drawn while the system asks for a password. What is clicked and typed there meanwhile is
// dropped, as in front of a panel.
LinuxComputerOptions drawing(LinuxComputerOptions options) {
  options.whileAsking = [] { waitDroppingInput(kBetweenLooks); };
  return options;
}

double seconds(std::chrono::milliseconds time) {
  return std::chrono::duration<double>(time).count();
}

}  // namespace

PaneComputer::PaneComputer() : PaneComputer(chosenOptions()) {}

PaneComputer::PaneComputer(const LinuxComputerOptions& options)
    : root_(options.root),
      computer_(drawing(options)),
      locks_(computer_.services().locks),
      notifications_(computer_.notifications),
      processes_(computer_.posix, options.speed),
      bundles_(computer_.bundles),
      platform_(computer_.platformFor(
          {application_, panels_, workspace_, notifications_, drawing_, runLoop_, processes_, &bundles_})),
      recording_(platform_, panels_, drawing_, RecordingMode::real) {}

PaneComputer::~PaneComputer() = default;

std::unique_ptr<HeldLock> DrawingLocks::lock(std::chrono::milliseconds limit) {
  std::unique_ptr<HeldLock> held;
  const auto isHeld = [&] {
    held = computer_.lock(std::chrono::milliseconds(0));
    return held != nullptr;
  };
  waitKeepingInput(isHeld, seconds(limit));
  return held;
}

SessionComputer PaneComputer::forSession() {
  const ComputerServices own = computer_.services();
  LaunchedTools& tools = own.tools;
  const auto waitForTools = [&tools](std::chrono::milliseconds limit) {
    const auto ended = [&tools] { return tools.wait(std::chrono::milliseconds(0)); };
    return waitKeepingInput(ended, seconds(limit));
  };
  return {platform_,
          recording_,
          {.locks = locks_,
           .tools = own.tools,
           .files = own.files,
           .ports = own.ports,
           .network = own.network,
           .delivery = own.delivery,
           .refusals = own.refusals,
           .unreadFiles = own.unreadFiles},
          panels_,
          drawing_,
          runLoop_,
          waitForTools,
          [](std::chrono::milliseconds time) { waitKeepingInput([] { return false; }, seconds(time)); },
          portInUse,
          settingsFiles()};
}

std::vector<std::string> PaneComputer::settingsFiles() {
  std::vector<std::string> places;
  for (const StoredFile& file : storedFiles())
    places.push_back(root_.onDisk(computer_.propertyLists.stringByExpandingTildeInPath(file.path)));
  return places;
}

}  // namespace norvik::prefpane
