// What the settings files mean, read from their bytes alone: the small model that random sessions of the
// change transaction are compared with. Knows the rows of the pane's tables, and neither a pane nor the
// transaction.
#pragma once

#include <cstdio>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "src/adapters/property_lists/codec.h"
#include "src/adapters/simulated/simulated_computer.h"
#include "src/server/mac/stores/settings.h"
#include "src/server/mac/text/utf8.h"

namespace norvik::change_model {

inline constexpr const char* kAgent = "/Users/user/Library/Preferences/com.veltrane.nvkagent.plist";
inline constexpr const char* kMenu = "/Users/user/Library/Preferences/com.veltrane.nvkmenua.plist";
inline constexpr const char* kServer = "/etc/norvik/svr.cfg";
inline constexpr const char* kLaunchd = "/etc/launchd.conf";
inline constexpr const char* kSaver = "/Library/Preferences/com.apple.screensaver.plist";
inline constexpr const char* kWindows = "/Library/Preferences/com.apple.windowserver.plist";
inline constexpr const char* kPaths[] = {kAgent, kServer, kSaver, kWindows, kLaunchd, kMenu};

using Dictionary = PropertyList::Dictionary;

// One file: nothing where its bytes cannot be read as what it should be.
struct FileMeaning {
  std::string bytes;
  bool exists = false;
  bool damaged = false;
  std::map<const Setting*, int64_t> values;
  Dictionary foreign;              // keys that are no settings
  std::vector<std::string> lines;  // of the launch daemon's file, those that set no limit
  std::pair<long long, long long> limit{0, 0};
};
using Meaning = std::map<std::string, FileMeaning>;

inline const Setting* serverRow(int64_t NVKServerPrefs::*field) {
  for (const Setting& row : serverSettings()) {
    const auto* number = std::get_if<Setting::Number>(&row.field.member);
    if (number != nullptr && *number == field) return &row;
  }
  return nullptr;
}

// Where a row's value is kept; null for a row that is kept nowhere.
inline const char* pathOf(const Setting& row) {
  if (&row == serverRow(&NVKServerPrefs::m_admin_scrSaver)) return kSaver;
  if (&row == serverRow(&NVKServerPrefs::m_admin_noQuartz)) return kWindows;
  if (row.stored == StoredAs::nowhere) return nullptr;
  const auto isIn = [&](SettingsTable table) {
    return &row >= table.data() && &row < table.data() + table.size();
  };
  return isIn(userSettings()) ? kAgent : isIn(serverSettings()) ? kServer : kMenu;
}

inline void eraseSetting(Dictionary& dictionary, const Setting& row) {
  if (row.service == nullptr) {
    dictionary.erase(row.key);
    return;
  }
  const auto found = dictionary.find(row.service);
  auto* inner = found != dictionary.end() ? found->second.as<Dictionary>() : nullptr;
  if (inner == nullptr) return;
  inner->erase(row.key);
  if (inner->empty()) dictionary.erase(found);
}

inline void readTable(SettingsTable table, const Dictionary& dictionary, FileMeaning& file) {
  file.foreign = dictionary;
  file.foreign.erase("NVKConfigVersion");
  for (const Setting& row : table) {
    if (row.stored == StoredAs::nowhere) continue;
    file.values[&row] = row.valueIn(PropertyList(dictionary));
    eraseSetting(file.foreign, row);
  }
  // With several users at once the only action is the second.
  const Setting* action = serverRow(&NVKServerPrefs::m_admin_loginAct);
  if (file.values.contains(action) && file.values[serverRow(&NVKServerPrefs::m_admin_multiUser)] > 0 &&
      file.values[action] != 2) {
    file.values[action] = -1;
  }
}

inline void readSystem(const char* path, const Dictionary& dictionary, FileMeaning& file) {
  const bool isSaver = std::string(path) == kSaver;
  const char* key = isSaver ? "loginWindowIdleTime" : "GLCompositor";
  file.foreign = dictionary;
  file.foreign.erase(key);
  const auto found = dictionary.find(key);
  const PropertyList* value = found != dictionary.end() ? &found->second : nullptr;
  if (!isSaver && value != nullptr) value = value->find("tileHeight");
  const bool isZero = value != nullptr && intValue(value) == 0;
  if (isSaver) file.values[serverRow(&NVKServerPrefs::m_admin_scrSaver)] = isZero ? 0 : 1;
  if (!isSaver) file.values[serverRow(&NVKServerPrefs::m_admin_noQuartz)] = isZero ? 1 : 0;
}

inline void readLines(FileMeaning& file) {
  for (std::size_t begin = 0; begin < file.bytes.size();) {
    const std::size_t end = std::min(file.bytes.find('\n', begin), file.bytes.size());
    const std::string line = file.bytes.substr(begin, end - begin);
    begin = end + 1;
    long long soft = 0;
    long long hard = 0;
    const int count = std::sscanf(line.c_str(), "limit maxfiles %lld %lld", &soft, &hard);
    if (count >= 1) file.limit = {soft, count == 1 ? soft : hard};
    if (!line.starts_with("limit") && !line.starts_with("#limit")) file.lines.push_back(line);
  }
  if (file.limit.first <= 0 || file.limit.second <= 0) file.limit = {0, 0};
}

inline FileMeaning meaningOf(const SimulatedComputer& computer, const char* path) {
  FileMeaning meaning;
  const auto file = computer.fileSystem.find(path);
  if (file != nullptr) meaning.bytes = file->bytes;
  meaning.exists = file != nullptr;
  if (std::string(path) == kLaunchd) {
    meaning.damaged = !isUtf8(meaning.bytes);
    if (!meaning.damaged) readLines(meaning);
    return meaning;
  }
  const auto list = meaning.bytes.empty() ? PropertyList() : decodePropertyList(meaning.bytes);
  const Dictionary* dictionary = list ? list->as<Dictionary>() : nullptr;
  meaning.damaged = dictionary == nullptr;
  if (meaning.damaged) return meaning;
  if (std::string(path) == kAgent) readTable(userSettings(), *dictionary, meaning);
  if (std::string(path) == kServer) readTable(serverSettings(), *dictionary, meaning);
  if (std::string(path) == kMenu) readTable(notificationSettings(), *dictionary, meaning);
  if (std::string(path) == kSaver || std::string(path) == kWindows) readSystem(path, *dictionary, meaning);
  return meaning;
}

inline Meaning meaningOf(const SimulatedComputer& computer) {
  Meaning meaning;
  for (const char* path : kPaths) meaning.emplace(path, meaningOf(computer, path));
  return meaning;
}

}  // namespace norvik::change_model
