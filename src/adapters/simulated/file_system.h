// The files and folders of the simulated computer, and who may change them. Has no open streams and knows
// nothing of the platform interfaces. Paths are absolute and used as written, except slashes at the end.
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
  // The user that the pane runs as, and the owner of the system.
  static constexpr std::string_view kUser = "user";
  static constexpr std::string_view kRoot = "root";

  // With the folders that every computer of this kind has, and the home folder /Users/user.
  FileSystem();

  const std::string& home() const { return home_; }
  // The new home folder and its Library/Preferences then exist; the old ones stay.
  void setHome(const std::string& path);

  bool isDirectory(std::string_view path) const;
  // Makes the folder and those above it.
  void addDirectory(std::string_view path);
  // Removes the folder and all below it.
  void removeDirectory(std::string_view path);

  // Null if there is no file. A file that is moved or removed stays valid for its holders.
  std::shared_ptr<SimulatedFile> find(std::string_view path) const;
  // Puts a new file there with mode 644, whether or not its folder exists; it belongs to the user if the user
  // may write there, otherwise to root.
  void put(std::string_view path, std::string bytes);
  void remove(std::string_view path);

  // Whether the pane's user may open files for writing there and make folders.
  bool userMayWrite(std::string_view path) const;
  // The file at `path`, created if it is missing; empty, and owned by `owner` with mode 644. Null for a
  // folder, and if the folder of a missing file does not exist. Checks no permission.
  std::shared_ptr<SimulatedFile> create(std::string_view path, std::string_view owner);
  // Makes one folder; false if something is there or the folder above does not exist. Checks no permission.
  bool makeDirectory(std::string_view path);
  // Moves a file as root does, over another one or into a folder. False, and nothing changed, if there is no
  // such file or the target's folder does not exist.
  bool move(std::string_view from, std::string_view to);

 private:
  bool canHold(std::string_view path) const;

  std::string home_;
  std::set<std::string, std::less<>> directories_;
  std::map<std::string, std::shared_ptr<SimulatedFile>, std::less<>> files_;
};

// The single steps of file work that a test can make fail.
enum class FileOperation { openRead, openWrite, seek, tell, read, write, close, makeDirectory };

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
