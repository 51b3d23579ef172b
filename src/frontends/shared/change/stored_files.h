// The files that the settings are kept in, as files: which there are, what they hold as bytes, and what is
// wrong with them. The pane's loads are silent about all of it.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "src/adapters/services/settings_files.h"
#include "src/frontends/shared/change/setting_groups.h"
#include "src/frontends/shared/interface/setting_description.h"
#include "src/server/mac/pane/pane.h"
#include "src/server/mac/platform/platform.h"

namespace norvik {

struct StoredFile {
  const char* path;           // with a tilde for the home folder
  const char* label;          // for a person: "the server's settings file"
  Group group;                // whose save writes it
  bool isLines;               // lines of text; else a property list
  bool byTool;                // a tool edits it by itself; the pane only reads it
  const char* temporaryName;  // where it is installed from a temporary file: its name; else null
  // Of a tool's file: the box whose setting it keeps; else null.
  Control NVKServerPrefs::*box = nullptr;
};

// A label at the beginning of a sentence.
std::string capitalised(std::string text);

inline constexpr std::size_t kStoredFileCount = 6;
const std::array<StoredFile, kStoredFileCount>& storedFiles();

// The file that keeps the row's value. Its path is one of storedFiles().
const StoredFile& fileOfRow(const Setting& row);
// Whether Apply would write the file, by itself or by a tool.
bool wouldSave(const NVKServerPrefs& pane, const StoredFile& file);
// Where a save writes the file's bytes first: the file itself, or a temporary one.
std::string writtenPath(const NVKServerPrefs& pane, const StoredFile& file, const std::string& path);

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

bool holdSame(const FileStates& one, const FileStates& other);

// Why bytes cannot be the content of such a file; empty where they can, and for none.
std::string damageOf(const StoredFile& file, std::string_view bytes);

// Reads all of them. Blocks as the file system does.
FileStates inspectFiles(Platform& computer, SettingsFiles& files);

// What is wrong with them, damaged files first. Values are those of the settings' tables with the range that
// the description gives their controls; the pane is asked only which controls those are.
std::vector<FileFinding> findingsOf(const FileStates& states, Platform& computer, SettingsFiles& files,
                                    const InterfaceDescription& interface, const NVKServerPrefs& pane);

}  // namespace norvik
