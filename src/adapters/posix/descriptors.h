// File descriptors: owned, closed on exec, opened without waiting for another process. Shared by the parts of
// the adapter that use files and pipes.
#pragma once

#include <csignal>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace norvik {

// Owns a descriptor; -1 is none.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() { reset(); }
  Descriptor(Descriptor&& other) noexcept : number_(other.release()) {}
  Descriptor& operator=(Descriptor&& other) noexcept;
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int number() const { return number_; }
  explicit operator bool() const { return number_ >= 0; }
  // Hands the descriptor over to the caller.
  int release();
  void reset();

 private:
  int number_ = -1;
};

struct Pipe {
  Descriptor reading;
  Descriptor writing;
};
// Both ends are none where there cannot be a pipe.
Pipe makePipe();

// Opens a file for reading. None for a directory, and for anything that cannot be opened at once.
Descriptor openForReading(const std::string& path);
// Opens a file for writing and empties it, keeping its owner and mode; creates it if it is missing. None as
// above.
Descriptor openForWriting(const std::string& path);
// Opens a file for reading and writing as it is. None as above; where it is missing, it is created or there
// is none, and errno is ENOENT.
enum class WhereMissing { fail, create };
Descriptor openToChange(const std::string& path, WhereMissing missing);

// The bytes of a regular file of at most `limit` bytes; nothing for any other, and if memory does not
// suffice.
std::optional<std::string> readRegularFile(const std::string& path, std::size_t limit);
// The rest of an open file of about `expected` bytes. Nothing, with errno set, where reading fails and where
// it is longer than `limit` (EFBIG). Throws std::bad_alloc.
std::optional<std::string> readToEnd(const Descriptor& file, std::size_t expected, std::size_t limit);
// Writes all bytes; false on the first failure. A pipe without a reader is a failure, never a signal.
bool writeAll(const Descriptor& file, std::string_view bytes);
// Blocks until the disk holds all that was written to the file. True also for a pipe or a device, which have
// no disk; false where the disk failed.
bool syncFile(int descriptor);

// While it lives, writing on this thread to a pipe without a reader fails with EPIPE, and writing beyond the
// size that the process may give to files fails with EFBIG, instead of raising the signals that would end the
// program.
class WriteSignalGuard {
 public:
  WriteSignalGuard();
  ~WriteSignalGuard();
  WriteSignalGuard(const WriteSignalGuard&) = delete;
  WriteSignalGuard& operator=(const WriteSignalGuard&) = delete;

 private:
  sigset_t raisedHere_;  // the signals that can only come from writing here
  sigset_t before_;      // what the thread had blocked
};

}  // namespace norvik
