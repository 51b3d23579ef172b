// Each wait looks again and again at what it waits for, and lets the toolkit draw in between.
#include "src/frontends/prefpane/drawing_waits.h"

#include <memory>
#include <utility>

#include "src/frontends/prefpane/input.h"
#include "src/frontends/prefpane/termination.h"
#include "src/frontends/shared/checks/port_in_use.h"

namespace norvik::prefpane {

namespace {

// A held lock during which the host is not killed.
class HeldInHost : public HeldLock {
 public:
  explicit HeldInHost(std::unique_ptr<HeldLock> held) : held_(std::move(held)) {}

 private:
  std::unique_ptr<HeldLock> held_;
  NoSuddenTermination alive_;
};

double seconds(std::chrono::milliseconds time) {
  return std::chrono::duration<double>(time).count();
}

}  // namespace

std::unique_ptr<HeldLock> DrawingLocks::lock(std::chrono::milliseconds limit) {
  std::unique_ptr<HeldLock> held;
  const auto isHeld = [&] {
    held = computer_.lock(std::chrono::milliseconds(0));
    return held != nullptr;
  };
  waitKeepingInput(isHeld, seconds(limit));
  if (held == nullptr) return nullptr;
  return std::make_unique<HeldInHost>(std::move(held));
}

SessionComputer sessionComputer(const ComputerOfSession& computer) {
  LaunchedTools& tools = computer.services.tools;
  const auto waitForTools = [&tools](std::chrono::milliseconds limit) {
    const auto ended = [&tools] { return tools.wait(std::chrono::milliseconds(0)); };
    return waitKeepingInput(ended, seconds(limit));
  };
  return {computer.platform,
          computer.recording,
          withLocks(computer.services, computer.locks),
          computer.records,
          computer.state,
          computer.panels,
          computer.drawing,
          computer.runLoop,
          waitForTools,
          [](std::chrono::milliseconds time) { waitKeepingInput([] { return false; }, seconds(time)); },
          portInUse,
          computer.settingsFiles,
          [&background = computer.background](std::function<void()> work, std::function<void()> then) {
            background.run(std::move(work), std::move(then));
          }};
}

}  // namespace norvik::prefpane
