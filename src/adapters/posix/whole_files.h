// Files that are read whole and replaced whole, so that a program that ends at any moment leaves the old
// bytes or the new ones. Paths are those on the disk.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "src/adapters/posix/descriptors.h"
#include "src/adapters/services/settings_files.h"

namespace norvik {

inline constexpr unsigned kOwnersOnly = 0600;
inline constexpr unsigned kOwnersFolder = 0700;

enum class Links { followed, refused };

// What is at the path and its bytes, at most `most`. Waits for no other process: a pipe or a device is not
// opened.
FileContent inspectFile(const std::string& diskPath, std::size_t most, Links links);

// Writes all bytes to the disk and closes the file, whose failure counts too.
bool finishFile(Descriptor file, std::string_view bytes);

// Replaces the file in one step; only the user may read it. 0, or the number of the error, after which the
// file is as it was.
int replaceFile(const std::string& diskPath, std::string_view bytes);

// Makes the folder and those above it that are missing, below the first `given` bytes of its path, for the
// user alone. Whether it is there then.
bool makeFolder(const std::string& diskPath, std::size_t given);

std::string folderOf(const std::string& path);

}  // namespace norvik
