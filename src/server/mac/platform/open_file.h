// The open file of the pane: one that closes at the end of its scope, over the Files interface.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "src/server/mac/platform/platform.h"

namespace norvik {

class OpenFile {
 public:
  // Opens the file on the installed computer, which must stay installed for as long as this object lives.
  OpenFile(const char* path, FileMode mode) : file_(platform().files.fopen(path, mode)) {}
  ~OpenFile() {
    if (file_ != nullptr) platform().files.fclose(file_);
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  bool isOpen() const { return file_ != nullptr; }

  // The size in bytes; the position is at the start afterwards. Nothing if the file is not open or a step
  // fails.
  std::optional<int64_t> size() {
    Files& files = platform().files;
    if (file_ == nullptr || files.fseek(file_, 0, SeekOrigin::end) != 0) return std::nullopt;
    const int64_t size = files.ftell(file_);
    if (size < 0 || files.fseek(file_, 0, SeekOrigin::start) != 0) return std::nullopt;
    return size;
  }
  // How many bytes were read as one block. For an open file only, as is write.
  std::size_t read(void* bytes, std::size_t size) { return platform().files.fread(bytes, size, file_); }
  // Whether all the bytes were written.
  bool write(std::string_view bytes) {
    return platform().files.fwrite(bytes.data(), bytes.size(), file_) == bytes.size();
  }

 private:
  FileRef file_;  // null where it could not be opened
};

}  // namespace norvik
