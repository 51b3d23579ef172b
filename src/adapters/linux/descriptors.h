// File descriptors: owned, closed on exec, opened without waiting for another process. Shared by the parts of
// the adapter that use files and pipes.
#pragma once

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

// Opens a file for reading. None for a directory, and for anything that cannot be opened at once.
Descriptor openForReading(const std::string& path);
// Opens a file for writing and empties it, keeping its owner and mode; creates it if it is missing. None as
// above.
Descriptor openForWriting(const std::string& path);

// The bytes of a regular file of at most `limit` bytes; nothing for any other, and if memory does not
// suffice.
std::optional<std::string> readRegularFile(const std::string& path, std::size_t limit);
// The rest of an open file of about `expected` bytes. Nothing, with errno set, where reading fails and where
// it is longer than `limit` (EFBIG). Throws std::bad_alloc.
std::optional<std::string> readToEnd(const Descriptor& file, std::size_t expected, std::size_t limit);
// Writes all bytes; false on the first failure. A pipe without a reader is a failure, never a signal.
bool writeAll(const Descriptor& file, std::string_view bytes);

// While it lives, writing on this thread to a pipe without a reader fails with EPIPE, instead of raising the
// signal that would end the program.
class BrokenPipeGuard {
 public:
  BrokenPipeGuard();
  ~BrokenPipeGuard();
  BrokenPipeGuard(const BrokenPipeGuard&) = delete;
  BrokenPipeGuard& operator=(const BrokenPipeGuard&) = delete;

 private:
  bool wasPending_ = false;
  bool wasBlocked_ = false;
};

}  // namespace norvik
