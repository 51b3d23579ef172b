// The settings files of a computer with POSIX as files, and the folder where copies of them are kept.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "src/adapters/posix/root_folder.h"
#include "src/adapters/services/settings_files.h"

namespace norvik {

class PosixSettingsFiles : public SettingsFiles {
 public:
  // `stateFolder` is the computer's path of the folder for copies, made when one is kept; empty for none, and
  // then nothing is kept. Copies are at the paths of their files below it.
  PosixSettingsFiles(RootFolder root, std::string stateFolder);

  // Waits for no other process: a pipe or a device is not opened.
  FileContent inspect(const std::string& path) override;
  // The bytes are on the disk before they take the place of an earlier copy.
  bool keepCopy(const std::string& path, std::string_view bytes) override;
  std::optional<KeptCopy> copyOf(const std::string& path) override;
  std::optional<std::string> setAside(const std::string& path, std::string_view bytes) override;
  bool remove(const std::string& path) override;

 private:
  std::optional<std::string> placeOf(const std::string& path) const;
  bool makeFolderOf(const std::string& place) const;
  std::optional<std::string> writeAside(const std::string& path, std::string_view bytes) const;

  RootFolder root_;
  std::string stateFolder_;
};

}  // namespace norvik
