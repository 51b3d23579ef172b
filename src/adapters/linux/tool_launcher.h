// Starts command-line tools as child processes that nobody waits for. They take effect in the order in which
// they were started, leave no zombies, outlive the host, and neither need nor disturb its handling of
// children.
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
  // `longestWait` bounds how long a tool holds up the one that was started after it.
  ToolLauncher(RootFolder root, std::chrono::milliseconds longestWait);

  // Starts the tool at the computer's `path` and returns at once. The tool finds an environment of its own,
  // with NORVIK_ROOT naming the root folder where there is one, "/" as its working folder, nothing on its
  // standard input, and its standard output at `output`, or nowhere for none. False where there is no such
  // program or no process can be made.
  bool start(const std::string& path, const std::vector<std::string>& arguments, const Descriptor& output);

  // Blocks until every tool started so far has ended, at most so long. False when time was up first.
  bool waitForAll(std::chrono::milliseconds limit);

 private:
  struct Running;

  RootFolder root_;
  std::chrono::milliseconds longestWait_;
  std::shared_ptr<Running> running_;  // shared with the threads that wait for the tools
  Descriptor previous_;               // of the process started last, to know when it has ended
};

}  // namespace norvik
