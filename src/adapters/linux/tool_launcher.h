// Starts command-line tools as child processes without waiting for them. They take effect in the order in
// which they were started, leave no zombies, may outlive the program, and neither need nor disturb its
// handling of children.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "src/adapters/linux/descriptors.h"
#include "src/adapters/linux/root_folder.h"

namespace norvik {

class ToolLauncher {
 public:
  // `longestWait` limits how long a tool delays the next one.
  ToolLauncher(RootFolder root, std::chrono::milliseconds longestWait);

  // Starts the tool at the computer's `path` and returns at once. The tool has its own environment, with
  // NORVIK_ROOT naming the root folder if there is one, "/" as its working folder, an empty standard input,
  // and `output` as its standard output, which is discarded without one. False if there is no such program or
  // no process can be made.
  bool start(const std::string& path, const std::vector<std::string>& arguments, const Descriptor& output);

  // Blocks until every tool started so far has ended. False when the limit passed first.
  bool waitForAll(std::chrono::milliseconds limit);

 private:
  struct Running;

  RootFolder root_;
  std::chrono::milliseconds longestWait_;
  std::shared_ptr<Running> running_;  // shared with the threads that wait for the tools
  Descriptor previous_;               // of the last process, to know when it has ended
};

}  // namespace norvik
