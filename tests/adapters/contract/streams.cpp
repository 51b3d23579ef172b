// Whole files through the files interface.
#include <array>

#include "tests/adapters/contract/computer_under_test.h"

namespace norvik {

std::string readRest(Files& files, FileRef file) {
  std::string bytes;
  std::array<char, 7> block{};
  for (std::size_t count = block.size(); count == block.size();) {
    count = files.fread(block.data(), block.size(), file);
    bytes.append(block.data(), count);
  }
  return bytes;
}

std::optional<std::string> readAll(Files& files, const std::string& path) {
  const FileRef file = files.fopen(path.c_str(), FileMode::readBinary);
  if (file == nullptr) return std::nullopt;
  std::string bytes = readRest(files, file);
  files.fclose(file);
  return bytes;
}

}  // namespace norvik
