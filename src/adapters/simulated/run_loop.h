// The main run loop of the simulated computer. Its timers fire when a test says so, or in a pass after their
// date by the simulated clock.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "src/adapters/simulated/clock.h"
#include "src/adapters/simulated/effects.h"
#include "src/server/mac/platform/run_loop.h"

namespace norvik {

class SimulatedRunLoop : public RunLoop {
 public:
  SimulatedRunLoop(const SimulatedClock& clock, const EffectReporter& effects);
  ~SimulatedRunLoop() override;

  // Whether timers can be made.
  void setTimerCreationGranted(bool granted) { creationGranted_ = granted; }
  // Whether a pass fires the timers that are due; otherwise only `fire` does.
  void setFiresInPasses(bool fires) { firesInPasses_ = fires; }
  // The interval of a timer that was added and is valid; nothing for any other and for null.
  std::optional<double> runningInterval(CFRunLoopTimerRef timer) const;
  // Fires a running timer once, whatever the clock says. False if it does not run.
  bool fire(CFRunLoopTimerRef timer);
  // The timers that were made and are not gone yet, with their names and what is missing: `timer 1, not
  // released` is the first made. A timer is gone when it was released, and invalidated too if it was added.
  std::map<CFRunLoopTimerRef, std::string> timers() const;

  CFRunLoopTimerRef CFRunLoopTimerCreate(double fireDate, double interval, CFRunLoopTimerCallBack callback,
                                         const CFRunLoopTimerContext& context) override;
  void CFRunLoopAddTimer(CFRunLoopTimerRef timer) override;
  void CFRunLoopTimerInvalidate(CFRunLoopTimerRef timer) override;
  // A timer that was added and is still valid stays in the loop.
  void CFRelease(CFRunLoopTimerRef timer) override;
  void runOnceInDefaultMode() override;

 private:
  struct Timer;
  Timer* find(CFRunLoopTimerRef timer) const;
  void forgetUnneeded();

  const SimulatedClock& clock_;
  const EffectReporter& effects_;
  bool creationGranted_ = true;
  bool firesInPasses_ = true;
  int lastNumber_ = 0;
  std::vector<std::unique_ptr<Timer>> timers_;
};

}  // namespace norvik
