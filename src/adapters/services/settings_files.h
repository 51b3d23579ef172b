// The settings files as files: their bytes and what is wrong with them, which the pane's loads do not tell;
// the copies kept of them; and what is taken away. Paths are the computer's, as in the platform interfaces.
// Called on the main thread; blocks as the file system does.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace norvik {

enum class FileKind {
  missing,
  regular,     // could be read; may be empty
  directory,   // or anything else that is no file: a pipe, a device
  notAllowed,  // is there and may not be read
  unreadable,  // an error of the medium
  tooLarge,    // over the limit of the readers
};

struct FileContent {
  FileKind kind = FileKind::missing;
  std::string bytes;   // of a regular file
  std::string reason;  // for a person, where it could not be read: "Permission denied"
};

struct KeptCopy {
  std::string bytes;
  std::string place;  // where it is kept, a path of the computer's
  std::string time;   // when it was kept, RFC 3339, UTC
};

class SettingsFiles {
 public:
  virtual ~SettingsFiles() = default;

  // What is at the path, links followed, and its bytes. Opens no pipe and no device, so that it never waits
  // for another process.
  virtual FileContent inspect(const std::string& path) = 0;

  // Keeps the bytes as the copy of the file at `path`, which may be missing, in place of an earlier copy,
  // readable by the user alone; each user has copies of their own. False if they could not be kept; the
  // earlier copy is then still there.
  virtual bool keepCopy(const std::string& path, std::string_view bytes) = 0;
  // The copy of the file at `path`; nothing if there is none or it cannot be read.
  virtual std::optional<KeptCopy> copyOf(const std::string& path) = 0;
  // Writes the bytes to a new file beside `path`, PATH.damaged, PATH.damaged.2 and so on; or, where the user
  // may not write there, beside the copies. Returns its path; nothing if it could be written in neither
  // place.
  virtual std::optional<std::string> setAside(const std::string& path, std::string_view bytes) = 0;

  // Removes a file of the user's own, such as a temporary one; a file that is not there is no failure.
  virtual bool remove(const std::string& path) = 0;
};

}  // namespace norvik
