// The files and folders of the simulated computer, and what may be done to them as whom. Holds no open
// streams and knows no port. Paths are absolute and taken as they stand, but for slashes at the end.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace norvik {

struct SimulatedFile {
  std::string bytes;
  std::string owner;
  unsigned mode = 0644;
};

class FileSystem {
 public:
  // The user that the pane runs as, and the one who owns the system.
  static constexpr std::string_view kUser = "user";
  static constexpr std::string_view kRoot = "root";

  // With the folders that every computer of this kind has, and the home folder /Users/user.
  FileSystem();

  const std::string& home() const { return home_; }
  // The new home folder and its Library/Preferences exist from then on; the old ones stay.
  void setHome(const std::string& path);

  bool isDirectory(std::string_view path) const;
  // Makes the folder and those above it.
  void addDirectory(std::string_view path);
  // Removes the folder and all below it.
  void removeDirectory(std::string_view path);

  // Null where there is no file. A file stays whole for those who hold it when it is moved or removed.
  std::shared_ptr<SimulatedFile> find(std::string_view path) const;
  // Puts a new file there, whether or not its folder exists, with mode 644; it belongs to the user where the
  // user may write, otherwise to root.
  void put(std::string_view path, std::string bytes);
  void remove(std::string_view path);

  // Whether the pane's user may open files for writing there and make folders.
  bool userMayWrite(std::string_view path) const;
  // The file at `path`, made where it is missing; emptied, and owned by `owner` with mode 644. Null for a
  // folder and where the folder of a missing file does not exist. Asks for no permission.
  std::shared_ptr<SimulatedFile> create(std::string_view path, std::string_view owner);
  // Makes one folder; false where something is there or the folder above does not exist. Asks for no
  // permission.
  bool makeDirectory(std::string_view path);
  // Moves a file as root does, over another one or into a folder. False, and nothing changed, where there is
  // no such file or the folder to move to does not exist.
  bool move(std::string_view from, std::string_view to);

 private:
  bool canHold(std::string_view path) const;

  std::string home_;
  std::set<std::string, std::less<>> directories_;
  std::map<std::string, std::shared_ptr<SimulatedFile>, std::less<>> files_;
};

// The single steps of file work that a test can make fail.
enum class FileOperation { openRead, openWrite, seek, tell, read, write, makeDirectory };

// Which steps fail on which paths.
class FileFaults {
 public:
  void set(FileOperation operation, std::string_view path, bool fails) {
    if (fails) {
      faults_.emplace(operation, path);
    } else {
      faults_.erase({operation, std::string(path)});
    }
  }
  bool has(FileOperation operation, std::string_view path) const {
    return faults_.contains({operation, std::string(path)});
  }

 private:
  std::set<std::pair<FileOperation, std::string>> faults_;
};

}  // namespace norvik
