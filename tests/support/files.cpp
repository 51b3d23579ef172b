// Files by the standard library's streams.
#include "tests/support/files.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace norvik {

namespace fs = std::filesystem;

std::optional<std::string> readFile(const fs::path& path) {
  const std::ifstream file(path, std::ios::binary);
  if (!file) return std::nullopt;
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

std::string contentOf(const fs::path& path) {
  return readFile(path).value_or("");
}

void writeFile(const fs::path& path, const std::string& bytes) {
  fs::create_directories(path.parent_path());
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file << bytes;
  file.close();
  ASSERT_TRUE(file.good()) << path;
}

void writeScript(const fs::path& path, const std::string& commands) {
  fs::remove(path);  // a program that is running cannot be written to
  writeFile(path, "#!/bin/sh\n" + commands + "\n");
  fs::permissions(path, fs::perms(0755));
}

}  // namespace norvik
