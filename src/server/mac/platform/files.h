// Platform interface to the standard file streams and the making of directories, one operation for each step
// that can fail. Called on the main thread only; blocks as the file system does, and on a pipe until its
// other end writes.
#pragma once

#include <cstddef>
#include <cstdint>

namespace norvik {

// An open stream as the adapter knows it; opaque to the pane. Null is none.
using FileRef = struct FileOpaque*;

enum class FileMode {
  readBinary,   // "rb": the file must exist
  writeBinary,  // "wb": created where missing, emptied where not
};

enum class SeekOrigin { start, end };

class Files {
 public:
  virtual ~Files() = default;

  // Opens the file; the caller closes it with fclose. Null if it cannot be opened, as a directory cannot be
  // in either mode.
  virtual FileRef fopen(const char* path, FileMode mode) = 0;
  // Moves the position; 0 on success, -1 on failure. A pipe cannot be sought, nor a place before the start.
  virtual int fseek(FileRef file, int64_t offset, SeekOrigin origin) = 0;
  // The position in bytes from the start, or -1 on failure.
  virtual int64_t ftell(FileRef file) = 0;
  // Reads up to `size` bytes as one block; the number read, fewer at the end of the file or on an error.
  virtual std::size_t fread(void* bytes, std::size_t size, FileRef file) = 0;
  // Writes `size` bytes as one block; the number written, fewer on an error. What could not be written by the
  // time of a short count may be known only then: an adapter does not defer these errors to fclose.
  virtual std::size_t fwrite(const void* bytes, std::size_t size, FileRef file) = 0;
  // Closes and forgets the stream, in every case. 0; -1 if what was written has not reached the disk whole.
  // The pane, by its rules, does not look at the result: by then the write has succeeded.
  virtual int fclose(FileRef file) = 0;

  // Makes one directory with the permission bits `mode`, less those that the process withholds from all that
  // it makes; 0 on success, -1 if something is there already or the directory cannot be made.
  virtual int mkdir(const char* path, uint32_t mode) = 0;
};

}  // namespace norvik
