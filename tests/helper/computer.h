// A folder that stands for a whole computer, and the helper's steps on it.
#pragma once

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "src/helper/steps.h"
#include "tests/helper/lines.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace norvik::helper {

inline constexpr const char* kTemporaryList = "/tmp/norvik.prefs.tmp.server.conf.812";
inline constexpr const char* kTemporaryLines = "/tmp/norvik.prefs.tmp.launchd.conf.812";
inline constexpr const char* kConfiguration = "/etc/norvik/svr.cfg";
inline constexpr const char* kLaunchdConfiguration = "/etc/launchd.conf";

// A property list with a dictionary, which holds the text.
inline std::string listWith(const std::string& text) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n<key>Text</key>\n"
         "<string>" +
         text + "</string>\n</dict>\n</plist>\n";
}

inline const SpelledLine& moveConfiguration() {
  return spelledLines()[10];
}
inline const SpelledLine& setConfigurationMode() {
  return spelledLines()[11];
}
inline const SpelledLine& setConfigurationOwner() {
  return spelledLines()[12];
}
inline const SpelledLine& moveLaunchdConfiguration() {
  return spelledLines()[13];
}

class FolderComputer {
 public:
  FolderComputer() {
    std::filesystem::create_directories(onDisk("/tmp"));
    std::filesystem::create_directories(onDisk("/etc/norvik"));
  }

  std::filesystem::path onDisk(const std::string& path) const { return folder_.path().native() + path; }
  void put(const std::string& path, const std::string& bytes) const { writeFile(onDisk(path), bytes); }
  std::string read(const std::string& path) const { return contentOf(onDisk(path)); }
  // Without following a link at its end.
  bool has(const std::string& path) const {
    return std::filesystem::symlink_status(onDisk(path)).type() != std::filesystem::file_type::not_found;
  }

  std::vector<std::string> namesIn(const std::string& path) const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(onDisk(path)))
      names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
  }

  Computer computer() const { return {folder_.path().native(), ::getuid()}; }
  StepOutcome carryOut(const SpelledLine& line, uid_t caller = ::getuid()) const {
    const auto allowed = allowedLine(line[0], Words(line.begin() + 1, line.end()));
    return helper::carryOut(computer(), allowed.value(), caller);
  }

 private:
  TemporaryFolder folder_;
};

}  // namespace norvik::helper
