// Lines that the helper on the system bus carries out.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "src/adapters/linux/privileged_lines.h"
#include "src/adapters/linux/system_bus.h"

namespace norvik {

class HelperClient : public PrivilegedLines {
 public:
  // What holds the lock for changes at the moment; null while nobody here holds it.
  using Lock = std::function<std::shared_ptr<const Descriptor>()>;

  // `bus` is borrowed, and nobody else uses its two callbacks. The helper keeps the lock until the lines that
  // were called for under it have ended; without `lock` it is given none.
  explicit HelperClient(SystemBus& bus, Lock lock = {});
  ~HelperClient() override;

  Answer run(const std::string& tool, const std::vector<std::string>& arguments, bool mayAsk,
             Descriptor* output) override;

  // If the helper exits before it reports how a line ended, the line counts as killed and its words say why.
  void forget() override { reported_.clear(); }
  bool wait(std::chrono::milliseconds limit) override;
  std::vector<ToolOutcome> outcomes() override;

 private:
  struct Line {
    std::string helper;  // its unique name on the bus
    uint32_t number = 0;
    ToolOutcome outcome;
  };

  void listen(sd_bus* bus);
  void watch(const std::string& helper);
  void end(const std::string& helper, uint32_t number, ToolOutcome outcome);
  void lose(const std::string* helper);
  static int onEnded(sd_bus_message* message, void* data, sd_bus_error* error);
  static int onOwnerChanged(sd_bus_message* message, void* data, sd_bus_error* error);

  SystemBus& bus_;
  Lock lock_;
  std::string watched_;  // the helper that is known to live
  sd_bus_slot* watch_ = nullptr;
  std::vector<std::shared_ptr<Line>> running_;
  std::vector<std::shared_ptr<Line>> reported_;  // since the last `forget`
};

}  // namespace norvik
