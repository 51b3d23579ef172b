// The change lock of a computer with POSIX: a lock of the kernel's on the folder of server settings. Nothing
// has to be created for it, every user can take it, and the kernel releases it however the program ends.
#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "src/adapters/posix/descriptors.h"
#include "src/adapters/posix/root_folder.h"
#include "src/adapters/services/change_locks.h"

namespace norvik {

class PosixChangeLocks : public ChangeLocks {
 public:
  // Is given each lock that is taken: the tools that are launched while it exists hold it too, until they
  // have ended, so that nobody overtakes them.
  using KeepOpen = std::function<void(std::weak_ptr<const Descriptor>)>;

  PosixChangeLocks(RootFolder root, KeepOpen keepOpen);

  std::unique_ptr<HeldLock> lock(std::chrono::milliseconds limit) override;

 private:
  RootFolder root_;
  KeepOpen keepOpen_;
};

}  // namespace norvik
