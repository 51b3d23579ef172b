// Takes a lock with flock, without waiting in the kernel, which only a signal could end.
#include "src/adapters/posix/change_locks.h"

#include <fcntl.h>
#include <sys/file.h>

#include <algorithm>
#include <cerrno>
#include <thread>

#include "src/adapters/posix/descriptors.h"

namespace norvik {

namespace {

using std::chrono::steady_clock;

// The first of these that exists is locked. It is the same folder for every user and every front end.
constexpr const char* kFolders[] = {"/etc/norvik", "/etc", "/"};
// Between two attempts. Short for a person, and thousands of times longer than an attempt.
constexpr std::chrono::milliseconds kPause{10};

enum class Attempt { taken, busy, impossible };

class PosixHeldLock : public HeldLock {
 public:
  explicit PosixHeldLock(std::shared_ptr<const Descriptor> folder) : folder_(std::move(folder)) {}

 private:
  std::shared_ptr<const Descriptor> folder_;  // closing it releases the lock where no tool has a copy
};

// Whether a fault will pass, so that it is worth another attempt.
bool passes(int error) {
  return error == EWOULDBLOCK || error == EINTR || error == EMFILE || error == ENFILE || error == ENOMEM;
}

// Locks the folder. Impossible where it is missing, may not be read, or where its file system has no locks.
Attempt lockFolder(const std::string& path, Descriptor& folder) {
  folder = Descriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder && ::flock(folder.number(), LOCK_EX | LOCK_NB) == 0) return Attempt::taken;
  return passes(errno) ? Attempt::busy : Attempt::impossible;
}

Attempt lockFirst(const RootFolder& root, Descriptor& folder) {
  for (const char* path : kFolders) {
    const Attempt attempt = lockFolder(root.onDisk(path), folder);
    if (attempt != Attempt::impossible) return attempt;
  }
  return Attempt::impossible;
}

}  // namespace

PosixChangeLocks::PosixChangeLocks(RootFolder root, KeepOpen keepOpen)
    : root_(std::move(root)), keepOpen_(std::move(keepOpen)) {}

std::unique_ptr<HeldLock> PosixChangeLocks::lock(std::chrono::milliseconds limit) {
  const auto end = steady_clock::now() + limit;
  for (;;) {
    Descriptor folder;
    const Attempt attempt = lockFirst(root_, folder);
    if (attempt == Attempt::impossible) return std::make_unique<PosixHeldLock>(nullptr);
    if (attempt == Attempt::taken) {
      auto held = std::make_shared<const Descriptor>(std::move(folder));
      keepOpen_(held);
      return std::make_unique<PosixHeldLock>(std::move(held));
    }
    folder.reset();
    const auto left = end - steady_clock::now();
    if (left <= steady_clock::duration::zero()) return nullptr;
    std::this_thread::sleep_for(std::min<steady_clock::duration>(left, kPause));
  }
}

}  // namespace norvik
