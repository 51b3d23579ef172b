// Files as the super-user may touch them: opened once, never through a link, never waiting for anybody, and
// replaced as a whole. Every operation throws StepFailed, with words for a person, and then the file at the
// path is as it was.
#pragma once

#include <sys/types.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "src/adapters/posix/descriptors.h"

namespace norvik::helper {

// Larger files are not read.
inline constexpr std::size_t kLargestFile = std::size_t{64} << 20;

class StepFailed : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A regular file with one link, open for reading, and where its name is.
struct CheckedFile {
  Descriptor folder;
  std::string name;
  std::string path;
  Descriptor file;
};

// Opens a file without following a link, without crossing into another mounted file system, and without
// waiting for the other end of a pipe or for the holder of a lease. Throws for anything but a regular file
// with one link.
CheckedFile openChecked(const std::string& path);

// The same, for a file that must be the user's own.
CheckedFile openOwn(const std::string& path, uid_t user);

// The bytes of the file, at most kLargestFile of them.
std::string readAll(const CheckedFile& file);

// The bytes of the regular file at the path, of whatever owner; nothing where there is no file.
std::optional<std::string> readExisting(const std::string& path);

// Removes the name, if it still names the file that was opened.
void removeName(const CheckedFile& file);

// Where a file keeps its previous content when it is replaced.
enum class Previous { forget, keepBeside };
inline constexpr std::string_view kPreviousSuffix = ".previous";

// Writes the bytes to a new file in the folder of `path`, of mode 644 and owned by `owner`, syncs it, and
// renames it to `path`. At every instant the path names the old file or the new one, each as a whole.
void replaceFile(const std::string& path, std::string_view bytes, uid_t owner, Previous previous);

// Makes the folders above the path that are missing, of mode 755.
void makeFoldersAbove(const std::string& path);

}  // namespace norvik::helper
