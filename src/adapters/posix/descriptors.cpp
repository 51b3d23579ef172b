// Opens, reads and writes whole files with system calls.
#include "src/adapters/posix/descriptors.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <new>
#include <utility>

namespace norvik {

namespace {

constexpr mode_t kNewFileMode = 0666;  // less the umask

constexpr int kWriteSignals[] = {SIGPIPE, SIGXFSZ};

// O_NONBLOCK keeps the opening of a pipe or a device from waiting for the other end. Afterwards reads and
// writes wait as usual, so that a short count means an error and not bad timing. A file that somebody has a
// lease on, as while it is written in place, is no pipe, and is waited for.
Descriptor openAtOnce(const std::string& path, int flags) {
  Descriptor file(::open(path.c_str(), flags | O_NONBLOCK | O_CLOEXEC, kNewFileMode));
  if (!file && errno == EWOULDBLOCK) file = Descriptor(::open(path.c_str(), flags | O_CLOEXEC, kNewFileMode));
  if (!file) return file;
  const int status = ::fcntl(file.number(), F_GETFL);
  ::fcntl(file.number(), F_SETFL, status & ~O_NONBLOCK);
  return file;
}

}  // namespace

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
  if (this != &other) {
    reset();
    number_ = other.release();
  }
  return *this;
}

int Descriptor::release() {
  return std::exchange(number_, -1);
}

void Descriptor::reset() {
  if (number_ >= 0) ::close(number_);
  number_ = -1;
}

Pipe makePipe() {
  std::array<int, 2> ends{-1, -1};
#ifdef __APPLE__
  if (::pipe(ends.data()) != 0) return {};
  for (const int end : ends) ::fcntl(end, F_SETFD, FD_CLOEXEC);
#else
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) return {};
#endif
  return {.reading = Descriptor(ends[0]), .writing = Descriptor(ends[1])};
}

Descriptor openForReading(const std::string& path) {
  Descriptor file = openAtOnce(path, O_RDONLY);
  // The system opens a directory for reading, and only the first read fails, which is too late.
  struct stat status {};
  if (file && (::fstat(file.number(), &status) != 0 || S_ISDIR(status.st_mode))) file.reset();
  return file;
}

Descriptor openForWriting(const std::string& path) {
  return openAtOnce(path, O_WRONLY | O_CREAT | O_TRUNC);
}

Descriptor openToChange(const std::string& path, WhereMissing missing) {
  return openAtOnce(path, O_RDWR | (missing == WhereMissing::create ? O_CREAT : 0));
}

std::optional<std::string> readToEnd(const Descriptor& file, std::size_t expected, std::size_t limit) {
  std::string bytes;
  bytes.reserve(expected);
  std::array<char, 16384> block;
  for (;;) {
    const ssize_t count = ::read(file.number(), block.data(), block.size());
    if (count == 0) return bytes;
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return std::nullopt;
    bytes.append(block.data(), static_cast<std::size_t>(count));
    if (bytes.size() <= limit) continue;
    errno = EFBIG;  // it grew since it was measured
    return std::nullopt;
  }
}

std::optional<std::string> readRegularFile(const std::string& path, std::size_t limit) {
  const Descriptor file = openForReading(path);
  struct stat status {};
  if (!file || ::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  const auto size = static_cast<std::size_t>(status.st_size);
  if (size > limit) return std::nullopt;
  try {
    return readToEnd(file, size, limit);
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
}

bool writeAll(const Descriptor& file, std::string_view bytes) {
  const WriteSignalGuard guard;
  while (!bytes.empty()) {
    const ssize_t count = ::write(file.number(), bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

bool syncFile(int descriptor) {
  int result = ::fsync(descriptor);
  while (result != 0 && errno == EINTR) result = ::fsync(descriptor);
  return result == 0 || errno == EINVAL;
}

WriteSignalGuard::WriteSignalGuard() {
  sigset_t pending;
  sigset_t blocked;
  sigpending(&pending);
  sigemptyset(&raisedHere_);
  sigemptyset(&blocked);
  for (const int signal : kWriteSignals) {
    sigaddset(&blocked, signal);
    if (sigismember(&pending, signal) == 0) sigaddset(&raisedHere_, signal);
  }
  pthread_sigmask(SIG_BLOCK, &blocked, &before_);
}

WriteSignalGuard::~WriteSignalGuard() {
  const int error = errno;
  // Not every system can wait for a signal with a limit, so that it is asked first whether there is one.
  sigset_t pending;
  sigpending(&pending);
  for (const int signal : kWriteSignals) {
    if (sigismember(&raisedHere_, signal) == 0 || sigismember(&pending, signal) == 0) continue;
    sigset_t one;
    sigemptyset(&one);
    sigaddset(&one, signal);
    int taken = 0;
    sigwait(&one, &taken);
  }
  pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  errno = error;
}

}  // namespace norvik
