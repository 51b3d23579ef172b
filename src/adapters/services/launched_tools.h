// What became of the tools that the pane launched. The pane launches them and never asks.
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace norvik {

struct ToolOutcome {
  enum class End {
    waiting,  // an earlier tool has not ended yet, so this one has not begun
    running,
    exited,  // `status` is its exit status; 127 also where it could not be run
    killed,  // `status` is the number of the signal
  };

  std::string tool;  // its path
  std::vector<std::string> arguments;
  End end = End::running;
  int status = 0;
  std::string words;  // what it wrote to its standard error: at most 4 KiB, white space around it removed

  bool succeeded() const { return end == End::exited && status == 0; }
  bool ended() const { return end == End::exited || end == End::killed; }
};

class LaunchedTools {
 public:
  virtual ~LaunchedTools() = default;

  // Forgets the outcomes so far; tools that run go on and are waited for, and are not reported any more.
  virtual void forget() = 0;
  // Blocks until every tool that was launched has ended. False when the limit passed first.
  virtual bool wait(std::chrono::milliseconds limit) = 0;
  // The tools launched since `forget`, in order, as they are now. Does not block.
  virtual std::vector<ToolOutcome> outcomes() = 0;
};

}  // namespace norvik
