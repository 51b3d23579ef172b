// The change lock of a Linux computer: a lock of the kernel's on the folder of server settings. Nothing has
// to be created for it, every user can take it, and the kernel releases it however the program ends.
#pragma once

#include <chrono>
#include <memory>
#include <vector>

#include "src/adapters/linux/root_folder.h"
#include "src/adapters/linux/tool_launcher.h"
#include "src/adapters/services/change_locks.h"

namespace norvik {

class LinuxChangeLocks : public ChangeLocks {
 public:
  // `tools` is borrowed: those that are launched while the lock is held hold it too, until they have ended,
  // so that a front end that is killed leaves nobody to overtake its tools. The helper does the same for the
  // lines that it carries out.
  LinuxChangeLocks(RootFolder root, ToolLauncher& tools);

  std::unique_ptr<HeldLock> lock(std::chrono::milliseconds limit) override;

 private:
  RootFolder root_;
  ToolLauncher& tools_;
};

}  // namespace norvik
