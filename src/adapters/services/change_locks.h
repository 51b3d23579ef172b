// The one lock of a computer for changes of its settings. Every front end holds it from reading the files
// until the tools that save them have ended.
#pragma once

#include <chrono>
#include <memory>

namespace norvik {

// The lock is held for as long as this object lives, and by the tools that were launched meanwhile until they
// end. The system releases it when the program ends, even if it is killed.
class HeldLock {
 public:
  virtual ~HeldLock() = default;
};

class ChangeLocks {
 public:
  virtual ~ChangeLocks() = default;

  // Waits for the lock, at most until the limit; null if somebody else held it all that time, be it a tool
  // that this program launched under an earlier lock. 0 asks once. A computer on which there is nothing that
  // can be locked gives a lock at once. Not recursive: who holds it already waits in vain. Blocks; on the
  // main thread.
  virtual std::unique_ptr<HeldLock> lock(std::chrono::milliseconds limit) = 0;
};

}  // namespace norvik
