// A file of this system whose path a person types, or what comes on the standard input.
#pragma once

#include <cstddef>
#include <string>

namespace norvik::command {

struct TypedFile {
  std::string bytes;
  std::string damage;  // why it cannot be taken: "it is empty"; empty where it can
};

// Reads it whole; "-" is the standard input. Nothing but a regular file is read, no empty one, and none with
// more bytes than `most`. Blocks as the file system does.
TypedFile readTypedFile(const std::string& path, std::size_t most);

}  // namespace norvik::command
