// Files as streams of the C library. A FileRef is really a FILE pointer, so that the pipe of a privileged
// tool can be read and closed here too.
#pragma once

#include <cstdio>

#include "src/adapters/posix/descriptors.h"
#include "src/adapters/posix/root_folder.h"
#include "src/server/mac/platform/files.h"

namespace norvik {

class PosixFiles : public Files {
 public:
  explicit PosixFiles(RootFolder root) : root_(std::move(root)) {}

  FileRef fopen(const char* path, FileMode mode) override;
  int fseek(FileRef file, int64_t offset, SeekOrigin origin) override;
  int64_t ftell(FileRef file) override;
  std::size_t fread(void* bytes, std::size_t size, FileRef file) override;
  std::size_t fwrite(const void* bytes, std::size_t size, FileRef file) override;
  // What was written to a file is on the disk afterwards; blocks until it is.
  int fclose(FileRef file) override;
  int mkdir(const char* path, uint32_t mode) override;

 private:
  RootFolder root_;
};

// A stream that owns the descriptor and reads from it, for PosixFiles to read and close; null on failure.
FileRef readingStream(Descriptor descriptor);

}  // namespace norvik
