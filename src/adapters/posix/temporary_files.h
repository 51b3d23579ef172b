// Writing below /tmp, where everybody may lay files: only into new files of the user's own.
#pragma once

#include <string>
#include <string_view>

#include "src/adapters/posix/descriptors.h"

namespace norvik {

// Whether the computer's `path` is that of a file directly in its folder for temporary files.
bool isTemporary(std::string_view path);

// Creates a file at the path on the disk and opens it for writing. What is there already goes first, where it
// is a regular file of the user's own without other names; for anything else, such as a link or a file of
// somebody else's, there is none, and it stays as it is.
Descriptor createTemporary(const std::string& diskPath);

// Writes the bytes to a file that is made in that way and syncs it. False where a step failed; nothing of it
// is left there then.
bool writeTemporary(const std::string& diskPath, std::string_view bytes);

}  // namespace norvik
