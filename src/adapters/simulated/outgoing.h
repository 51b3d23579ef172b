// The platform interfaces whose calls only have an effect outside: the simulated computer just reports them.
#pragma once

#include <string>
#include <vector>

#include "src/adapters/services/computer_services.h"
#include "src/adapters/simulated/effects.h"
#include "src/server/mac/platform/application.h"
#include "src/server/mac/platform/assertions.h"
#include "src/server/mac/platform/system_log.h"

namespace norvik {

class SimulatedWorkspace : public Workspace {
 public:
  explicit SimulatedWorkspace(const EffectReporter& effects) : effects_(effects) {}
  void openURL(std::string_view url) override;

 private:
  const EffectReporter& effects_;
};

class SimulatedNotificationCenter : public DistributedNotificationCenter, public NotificationDelivery {
 public:
  explicit SimulatedNotificationCenter(const EffectReporter& effects) : effects_(effects) {}
  // Whether later notifications reach the bus. What the pane posts is an effect either way.
  void setDelivers(bool delivers) { delivers_ = delivers; }

  void postNotificationName(const char* name, const char* object, unsigned options) override;
  bool lastWasDelivered() const override { return lastWasDelivered_; }

 private:
  const EffectReporter& effects_;
  bool delivers_ = true;
  bool lastWasDelivered_ = true;
};

class SimulatedDrawing : public Drawing {
 public:
  explicit SimulatedDrawing(const EffectReporter& effects) : effects_(effects) {}
  void display(Control& control) override;
  // Reports only the main view, whose drawing includes all its controls.
  void displayIfNeeded(View& view) override;

 private:
  const EffectReporter& effects_;
};

class SimulatedLog : public SystemLog {
 public:
  explicit SimulatedLog(const EffectReporter& effects) : effects_(effects) {}
  void syslog(int priority, std::string_view line) override;

 private:
  const EffectReporter& effects_;
};

// Keeps the reports for a test to look at.
class SimulatedAssertionHandler : public AssertionHandler {
 public:
  struct Failure {
    std::string function;
    std::string file;
    int line = 0;
    std::string description;
    bool operator==(const Failure&) const = default;
  };

  void handleFailureInFunction(std::string_view function, std::string_view file, int line,
                               std::string_view description) override;
  const std::vector<Failure>& failures() const { return failures_; }

 private:
  std::vector<Failure> failures_;
};

}  // namespace norvik
