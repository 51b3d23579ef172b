// The command-line tools of the simulated computer, and what became of those that were launched. A tool takes
// effect when it ends, which is at its launch unless a test sets otherwise. A tool that fails changes
// nothing.
#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "src/adapters/services/launched_tools.h"
#include "src/adapters/simulated/clock.h"
#include "src/adapters/simulated/file_system.h"
#include "src/adapters/simulated/server_service.h"

namespace norvik {

class Tools : public LaunchedTools {
 public:
  using Arguments = std::vector<std::string>;

  // Borrows all of them.
  Tools(FileSystem& fileSystem, ServerService& service, SimulatedClock& clock);

  // What the tool prints when it is launched with exactly these arguments, instead of its own output.
  void setOutput(const std::string& tool, const Arguments& arguments, std::string output);
  // The kernel value of that name; nothing for none.
  void setKernelValue(const std::string& name, std::optional<std::string> value);

  // Later launches of the tool, with any arguments or only with that first one, which counts for more: they
  // fail with this exit status and these words, are killed by this signal, or behave as usual.
  void setFailure(const std::string& tool, const std::optional<std::string>& firstArgument, int status,
                  std::string words);
  void setKilled(const std::string& tool, const std::optional<std::string>& firstArgument, int signal);
  void setUsual(const std::string& tool, const std::optional<std::string>& firstArgument);
  // They take this long by the clock; without a time they never end.
  void setDuration(const std::string& tool, const std::optional<std::string>& firstArgument,
                   std::optional<std::chrono::milliseconds> duration);

  // Tools that are launched while the object exists share it until they have ended.
  void keepWhileRunning(std::weak_ptr<void> shared) { shared_ = std::move(shared); }

  // Launches the tool as root, to begin when those before it have ended. A tool that this computer does not
  // have does nothing.
  void launch(const std::string& tool, const Arguments& arguments);
  // Launches a tool that only reports and returns what it prints, nothing where it never ends. It waits for
  // those before it, at most as long as on every computer, and runs; both moves the clock.
  std::string launchAndRead(const std::string& tool, const Arguments& arguments);

  void forget() override { reported_.clear(); }
  // Moves the clock.
  bool wait(std::chrono::milliseconds limit) override;
  std::vector<ToolOutcome> outcomes() override;

 private:
  // What a tool did.
  struct Result {
    std::string output;
    int status = 0;
    std::string words;
  };
  struct Tool {
    std::string_view path;
    Result (Tools::*run)(const Arguments& arguments);
  };
  static const Tool kTools[];

  // How the launches of a tool go that a test has set.
  struct Behaviour {
    std::optional<ToolOutcome> ending;  // instead of the tool's own
    std::optional<std::chrono::microseconds> duration = std::chrono::microseconds(0);
  };
  using Which = std::pair<std::string, std::optional<std::string>>;  // a tool and a first argument

  struct Launched {
    ToolOutcome outcome;
    Behaviour behaviour;
    std::shared_ptr<void> shared;
    int64_t launchedAt = 0;  // on the clock
    int64_t beganAt = 0;     // the same, of the first in the queue
  };

  Behaviour& behaviourToSet(const std::string& tool, const std::optional<std::string>& firstArgument);
  Behaviour behaviourOf(const std::string& tool, const Arguments& arguments) const;
  std::shared_ptr<Launched> add(const std::string& tool, const Arguments& arguments);
  // Moves the clock until all have ended; false where they have not by then.
  bool waitUntil(int64_t latest);
  // Ends the tools whose time has come.
  void proceed();
  std::string end(Launched& launched);
  Result run(const std::string& tool, const Arguments& arguments);

  static Result failure(std::string words);
  Result mv(const Arguments& arguments);
  Result chmod(const Arguments& arguments);
  Result chown(const Arguments& arguments);
  Result defaults(const Arguments& arguments);
  Result sysctl(const Arguments& arguments);
  Result nvkservice(const Arguments& arguments);

  FileSystem& fileSystem_;
  ServerService& service_;
  SimulatedClock& clock_;
  std::map<std::string, std::string, std::less<>> kernel_;
  std::map<std::pair<std::string, Arguments>, std::string> outputs_;
  std::map<Which, Behaviour> behaviours_;
  std::weak_ptr<void> shared_;
  std::deque<std::shared_ptr<Launched>> queue_;      // those that have not ended; only the first has begun
  std::vector<std::shared_ptr<Launched>> reported_;  // since the last `forget`
};

}  // namespace norvik
