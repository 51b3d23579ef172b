// Whole files on the disk.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace norvik {

// The file's bytes; nothing where it cannot be read.
std::optional<std::string> readFile(const std::filesystem::path& path);
// The same, and empty where it cannot be read.
std::string contentOf(const std::filesystem::path& path);

// Writes a file with these bytes, over one that exists, and makes the folders above it. The test fails where
// this is not possible.
void writeFile(const std::filesystem::path& path, const std::string& bytes);
// Writes a program of shell commands. It replaces one that exists as a new file, even while that one runs.
void writeScript(const std::filesystem::path& path, const std::string& commands);

}  // namespace norvik
