// Privileged tools, one after the other. The authorization service starts a tool at once, in no order,
// returns no process id and never waits for it. So each launch here waits until the tool before it has ended,
// and takes its own tool's end, as nobody else does.
//
// What this system has no answer for: what a tool wrote to its standard error, which goes to the host's; and
// tools whose turn has not come when the process ends, which are never started.
#pragma once

#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "src/adapters/posix/descriptors.h"
#include "src/adapters/services/launched_tools.h"
#include "src/server/mac/platform/authorization.h"

namespace norvik {

// A launch of one tool.
struct PrivilegedTool {
  std::string path;
  std::vector<std::string> arguments;
  // Starts the tool; for one that is read, stores the stream of its output. May block while a person is asked
  // for a password. Called on any thread.
  std::function<OSStatus(std::FILE** pipe)> start;
};

class ToolQueue : public LaunchedTools {
 public:
  // `longestDelay` limits how long a tool whose output is read waits for those before it; `longestEnd` how
  // long `finish` waits.
  ToolQueue(std::chrono::milliseconds longestDelay, std::chrono::milliseconds longestEnd);
  // As `finish`.
  ~ToolQueue() override;

  // Starts the tool when all before it have ended: at once if there are none, and then returns the service's
  // answer; otherwise from a thread of its own, and then what the service answers shows in the outcome.
  OSStatus launch(PrivilegedTool tool);
  // Starts a tool that only reports, and stores the stream of its output. Nothing waits for it, and it waits
  // no longer than the delay.
  OSStatus launchAndRead(const PrivilegedTool& tool, std::FILE*& pipe);
  // Blocks until no tool waits for its turn any more, at most for the limit; those that still wait then are
  // given up and reported so. Nothing is being started when this returns.
  void finish();

  // Tools that are launched while the descriptor exists keep it open until they have ended.
  void keepOpen(std::weak_ptr<const Descriptor> held);

  void forget() override;
  bool wait(std::chrono::milliseconds limit) override;
  std::vector<ToolOutcome> outcomes() override;

 private:
  struct State;
  struct Launch;

  std::shared_ptr<State> state_;  // shared with the threads that wait for the tools
  std::chrono::milliseconds longestDelay_;
  std::chrono::milliseconds longestEnd_;
};

}  // namespace norvik
