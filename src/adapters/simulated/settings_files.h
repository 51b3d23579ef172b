// The settings files of the simulated computer as files, over its file system and its faults. Copies are kept
// in the user's state folder.
#pragma once

#include <ctime>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "src/adapters/services/settings_files.h"
#include "src/adapters/simulated/clock.h"
#include "src/adapters/simulated/file_system.h"

namespace norvik {

class SimulatedSettingsFiles : public SettingsFiles {
 public:
  // Borrows all of them.
  SimulatedSettingsFiles(FileSystem& fileSystem, const FileFaults& faults, const SimulatedClock& clock);

  // A fault at opening for reading means that the user may not read the file, one at reading that its medium
  // is broken.
  FileContent inspect(const std::string& path) override;
  // Fails if opening for writing, or writing, is set to fail at the place of the copy.
  bool keepCopy(const std::string& path, std::string_view bytes) override;
  std::optional<KeptCopy> copyOf(const std::string& path) override;
  // As keepCopy, at each name that is tried.
  std::optional<std::string> setAside(const std::string& path, std::string_view bytes) override;
  bool remove(const std::string& path) override;

  // Where the copy of the file at `path` is kept.
  std::string placeOf(const std::string& path) const;

 private:
  bool write(const std::string& path, std::string_view bytes);
  std::optional<std::string> writeAside(const std::string& path, std::string_view bytes);

  FileSystem& fileSystem_;
  const FileFaults& faults_;
  const SimulatedClock& clock_;
  std::map<std::string, std::time_t> keptAt_;  // by place
};

}  // namespace norvik
