// The table that the build makes of the files of this folder. For resources.cpp alone.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace norvik {

struct EmbeddedFile {
  std::string_view file_name;  // "authlock.tiff"
  const unsigned char* bytes;
  std::size_t size;
};

std::span<const EmbeddedFile> embeddedFiles();

}  // namespace norvik
