// What became of the tools that the pane launched. The pane launches them and never asks.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace norvik {

// How much of a tool's standard error is kept, in bytes.
inline constexpr std::size_t kLongestToolWords = 4096;

// How long, by the computer's clock, a tool whose output is read waits for the tools before it. Counted from
// the launch of the last of them, so that one that does not end delays many such tools only once.
inline constexpr std::chrono::seconds kLongestReportDelay{10};

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
  // What it wrote to its standard error before it ended: the first kLongestToolWords, white space around them
  // removed, otherwise as they are, whatever their encoding. Empty while it has not ended, and for a tool
  // that ran on a computer which does not keep them, as the Mac does not. Where the system could not start a
  // tool whose turn came later, or does not say how it ended, that is said here.
  std::string words;

  bool succeeded() const { return end == End::exited && status == 0; }
  bool ended() const { return end == End::exited || end == End::killed; }
};

// Called on the main thread. A tool that the authorization service did not start is none of these.
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
