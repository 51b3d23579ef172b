// The files that the settings are kept in, as files: which there are, what they hold as bytes, and what is
// wrong with them. The pane's loads are silent about all of it.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "src/adapters/services/settings_files.h"
#include "src/frontends/shared/interface/setting_description.h"
#include "src/server/mac/pane/pane.h"
#include "src/server/mac/platform/platform.h"

namespace norvik {

// The groups of settings that Apply saves, each with a test of its own whether it would.
enum class Group { user, server, limit, notifications };

struct StoredFile {
  const char* path;           // with a tilde for the home folder
  const char* label;          // for a person: "the server's settings file"
  Group group;                // whose save writes it
  bool isLines;               // lines of text; else a property list
  bool byTool;                // a tool edits it by itself; the pane only reads it
  const char* temporaryName;  // where it is installed from a temporary file: its name; else null
};

inline constexpr std::size_t kStoredFileCount = 6;
std::array<StoredFile, kStoredFileCount> storedFiles();

// A settings file that is there and that the pane cannot read, or a stored value that cannot be.
struct FileFinding {
  std::string file;      // its path, without a tilde
  std::string label;     // "the server's settings file"
  bool damaged = false;  // the whole file cannot be read; else one value in it cannot be
  std::string sentence;  // what is wrong, for a person
  std::string key;       // of the value
  std::string setting;   // that shows it; may be empty
  std::string copyTime;  // of the copy that can be restored; empty where there is none
  Group group = Group::server;
};

// The files as they are at one moment.
struct FileState {
  StoredFile file;
  std::string path;  // without a tilde
  FileContent content;
  std::string damage;  // why the pane cannot read it: empty where it can, and where it is missing or empty

  bool holdsSameAs(const FileState& other) const;
};
using FileStates = std::vector<FileState>;

// Reads all of them. Blocks as the file system does.
FileStates inspectFiles(Platform& computer, SettingsFiles& files);

// What is wrong with them, damaged files first. Values are those of the settings' tables with the range that
// the description gives their controls; the pane is asked only which controls those are.
std::vector<FileFinding> findingsOf(const FileStates& states, Platform& computer, SettingsFiles& files,
                                    const InterfaceDescription& interface, const NVKServerPrefs& pane);

}  // namespace norvik
