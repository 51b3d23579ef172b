// Starts command-line tools as processes without waiting for them, and knows what became of them. They take
// effect in the order in which they were started, leave no zombies, may outlive the program, and neither need
// nor disturb its handling of children.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "src/adapters/linux/tool_process.h"
#include "src/adapters/posix/descriptors.h"
#include "src/adapters/posix/root_folder.h"
#include "src/adapters/services/launched_tools.h"

namespace norvik {

class ToolLauncher : public LaunchedTools {
 public:
  // `longestDelay` limits how long a tool whose output is read waits for those before it.
  ToolLauncher(RootFolder root, std::chrono::milliseconds longestDelay);
  ~ToolLauncher() override;

  // Starts the tool at the computer's `path` and returns at once. The tool has its own environment, with
  // NORVIK_ROOT naming the root folder if there is one, "/" as its working folder, an empty standard input,
  // and `output` as its standard output, which is discarded without one. It begins when every tool before it
  // has ended. One with an `output` only reports, so nothing waits for it, and it waits no longer than the
  // delay. False if there is no such program or no process can be made.
  bool start(const std::string& path, const std::vector<std::string>& arguments, const Descriptor& output);

  // Tools that are started while the descriptor exists keep it open until they have ended; they cannot use
  // it, and what they start does not get it.
  void keepOpen(std::weak_ptr<const Descriptor> held) { held_ = std::move(held); }

  void forget() override { reported_.clear(); }
  bool wait(std::chrono::milliseconds limit) override;
  std::vector<ToolOutcome> outcomes() override;

 private:
  using Clock = std::chrono::steady_clock;
  struct Running;
  struct Launch;

  bool run(ToolProcess& tool, bool reports, const std::shared_ptr<Launch>& launch);
  std::chrono::milliseconds delayLeft() const;

  RootFolder root_;
  std::chrono::milliseconds longestDelay_;
  std::shared_ptr<Running> running_;               // shared with the threads that wait for the tools
  std::vector<std::shared_ptr<Launch>> reported_;  // since the last `forget`; shared with them too
  Descriptor previous_;  // the process of the last tool that others wait for, to know when it has ended
  Clock::time_point previousStarted_;
  std::weak_ptr<const Descriptor> held_;
};

}  // namespace norvik
