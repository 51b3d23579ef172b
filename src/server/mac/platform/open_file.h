// A file that is closed at the end of its scope, over the files port.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "src/server/mac/platform/platform.h"

namespace norvik {

class OpenFile {
 public:
  OpenFile(const char* path, FileMode mode) : file_(platform().files.fopen(path, mode)) {}
  ~OpenFile() {
    if (file_ != nullptr) platform().files.fclose(file_);
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  bool isOpen() const { return file_ != nullptr; }

  // Its size in bytes, with the position at the start afterwards; nothing where the file is not open or a
  // step fails.
  std::optional<int64_t> size() {
    Files& files = platform().files;
    if (file_ == nullptr || files.fseek(file_, 0, SeekOrigin::end) != 0) return std::nullopt;
    const int64_t size = files.ftell(file_);
    if (size < 0 || files.fseek(file_, 0, SeekOrigin::start) != 0) return std::nullopt;
    return size;
  }
  // How many bytes were read as one block.
  std::size_t read(void* bytes, std::size_t size) { return platform().files.fread(bytes, size, file_); }
  // Whether all of it was written.
  bool write(std::string_view bytes) {
    return platform().files.fwrite(bytes.data(), bytes.size(), file_) == bytes.size();
  }

 private:
  FileRef file_;
};

}  // namespace norvik
