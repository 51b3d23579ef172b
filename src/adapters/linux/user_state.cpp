// Locks a file beside the one that is written, as that one is replaced.
#include "src/adapters/linux/user_state.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <thread>
#include <utility>

#include "src/adapters/posix/descriptors.h"
#include "src/adapters/posix/whole_files.h"

namespace norvik {

namespace {

using std::chrono::steady_clock;

// A file is written in a few milliseconds; who takes longer than this is stopped or stuck.
constexpr std::chrono::seconds kPatience{2};
constexpr std::chrono::milliseconds kPause{5};

class LockedFile : public HeldLock {
 public:
  explicit LockedFile(Descriptor file) : file_(std::move(file)) {}

 private:
  Descriptor file_;
};

// The locked file; none, with errno, where another program has it locked or it cannot be made.
Descriptor lockFile(const std::string& diskPath) {
  Descriptor file(::open(diskPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY,
                         kOwnersOnly));
  if (file && ::flock(file.number(), LOCK_EX | LOCK_NB) != 0) {
    const int error = errno;
    file.reset();
    errno = error;
  }
  return file;
}

Descriptor lockFileInTime(const std::string& diskPath) {
  const auto end = steady_clock::now() + kPatience;
  Descriptor file = lockFile(diskPath);
  while (!file && (errno == EWOULDBLOCK || errno == EINTR) && steady_clock::now() < end) {
    std::this_thread::sleep_for(kPause);
    file = lockFile(diskPath);
  }
  return file;
}

}  // namespace

LinuxUserState::LinuxUserState(RootFolder root, std::string stateFolder, uid_t user)
    : root_(std::move(root)), folder_(std::move(stateFolder)), user_(user) {}

std::string LinuxUserState::userName() {
  const passwd* entry = ::getpwuid(user_);
  return entry != nullptr ? entry->pw_name : std::to_string(user_);
}

std::time_t LinuxUserState::now() {
  return std::time(nullptr);
}

std::string LinuxUserState::placeOf(const std::string& name) {
  return folder_ + "/" + name;
}

std::string LinuxUserState::onDisk(const std::string& name) const {
  return root_.onDisk(folder_ + "/" + name);
}

bool LinuxUserState::makeStateFolder() const {
  return !folder_.empty() && makeFolder(root_.onDisk(folder_), root_.folder().size() + 1);
}

FileContent LinuxUserState::read(const std::string& name) {
  if (folder_.empty()) return {};
  return inspectFile(onDisk(name), kMostStateBytes, Links::refused);
}

std::string LinuxUserState::update(
    const std::string& name,
    const std::function<std::optional<std::string>(const std::string& bytes)>& change) {
  if (!makeStateFolder()) return folder_.empty() ? std::strerror(ENOENT) : std::strerror(errno);
  const Descriptor lock = lockFileInTime(onDisk(name + ".lock"));
  if (!lock) return std::strerror(errno);
  const FileContent now = read(name);
  if (now.kind != FileKind::regular && now.kind != FileKind::missing) return now.reason;
  const auto bytes = change(now.bytes);
  if (!bytes) return "";
  if (bytes->size() > kMostStateBytes) return std::strerror(EFBIG);
  const int error = replaceFile(onDisk(name), *bytes);
  return error == 0 ? "" : std::strerror(error);
}

bool LinuxUserState::remove(const std::string& name) {
  return !folder_.empty() && (::unlink(onDisk(name).c_str()) == 0 || errno == ENOENT);
}

std::unique_ptr<HeldLock> LinuxUserState::hold(const std::string& name) {
  if (!makeStateFolder()) return nullptr;
  Descriptor file = lockFile(onDisk(name + ".lock"));
  return file ? std::make_unique<LockedFile>(std::move(file)) : nullptr;
}

}  // namespace norvik
