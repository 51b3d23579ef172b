// The table of the files, and the search for what is wrong in them.
#include "src/frontends/shared/change/stored_files.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "src/adapters/property_lists/codec.h"
#include "src/frontends/shared/language/language.h"
#include "src/server/mac/control/tool_commands.h"
#include "src/server/mac/stores/settings.h"
#include "src/server/mac/stores/settings_paths.h"
#include "src/server/mac/text/utf8.h"

namespace norvik {

namespace {

// clang-format off
constexpr std::array<StoredFile, kStoredFileCount> kFiles = {{
    {kAgentFile,         english("your settings file"),                Group::user,          false, false, nullptr},
    {kServerConfigFile,  english("the server's settings file"),        Group::server,        false, false, kServerConfigTempName},
    {kScreenSaverFile,   english("the screen saver's settings file"),  Group::server,        false, true,  nullptr, &NVKServerPrefs::ib_admin_chkbox_scrSaver},
    {kWindowServerFile,  english("the window server's settings file"), Group::server,        false, true,  nullptr, &NVKServerPrefs::ib_admin_chkbox_noQuartz},
    {kLaunchdConfigFile, english("the launch daemon's settings file"), Group::limit,         true,  false, kLaunchdConfigTempName},
    {kMenuAgentFile,     english("your notification settings file"),   Group::notifications, false, false, nullptr},
}};
// clang-format on

constexpr const char* kNoDictionary = english("it is no property list with a dictionary at its root");

struct KindWords {
  FileKind kind;
  const char* words;
};
constexpr KindWords kKindWords[] = {
    {FileKind::directory, english("it is no regular file")},
    {FileKind::notAllowed, english("it may not be read")},
    {FileKind::unreadable, english("it cannot be read")},
    {FileKind::tooLarge, english("it is too large")},
};

// Why a file that is there cannot be read as what it should be; empty where it can.
std::string damageIn(const StoredFile& file, const std::string& path, const FileContent& content,
                     Platform& computer) {
  for (const KindWords& known : kKindWords) {
    if (known.kind != content.kind) continue;
    return content.reason.empty() ? translated(known.words)
                                  : sentence("{1} ({2})", {translated(known.words), content.reason});
  }
  if (content.kind == FileKind::missing || content.bytes.empty()) return "";
  if (!file.isLines && computer.propertyLists.dictionaryWithContentsOfFile(path)) return "";
  const std::string damage = damageOf(file, content.bytes);
  return damage.empty() && !file.isLines ? translated(kNoDictionary) : damage;
}

FileFinding damagedFile(const FileState& state, SettingsFiles& files) {
  const auto copy = files.copyOf(state.path);
  return {.file = state.path,
          .label = translated(state.file.label),
          .damaged = true,
          .sentence = sentence("{1}, {2}, is damaged: {3}.",
                               {capitalised(translated(state.file.label)), state.path, state.damage}),
          .key = "",
          .setting = "",
          .copyTime = copy ? copy->time : "",
          .group = state.file.group};
}

// The smallest and the largest number that a setting's key may hold; both ends count.
struct Range {
  int64_t least;
  int64_t most;
};

std::optional<Range> rangeOf(const Setting& row, const InterfaceDescription& interface,
                             const NVKServerPrefs& pane) {
  if (row.stored != StoredAs::integer32 && row.stored != StoredAs::integer64) return std::nullopt;
  if (row.least != kLeast) return Range{row.least, row.most};
  const ControlDescription* control = interface.find((pane.*row.controls[0]).name());
  if (control == nullptr) return std::nullopt;
  if (control->kind == ControlKind::popUp && row.shown == Shown::item) {
    return Range{1, static_cast<int64_t>(control->items.size())};
  }
  if (control->kind == ControlKind::textField && control->minimum && control->maximum) {
    return Range{static_cast<int64_t>(*control->minimum), static_cast<int64_t>(*control->maximum)};
  }
  // A box, and a choice that it switches off: -1 is none, then the buttons.
  const auto buttons = std::ranges::count_if(row.controls, [&](Control NVKServerPrefs::*edits) {
    return edits != nullptr && (pane.*edits).kind() == ControlKind::radioButton;
  });
  return buttons > 0 ? std::optional(Range{-1, buttons - 1}) : std::nullopt;
}

struct ShownValue {
  std::string text;
  std::optional<int64_t> number;
};

ShownValue shownValue(const PropertyList& value) {
  if (const std::string* text = value.as<std::string>()) {
    const int64_t number = leadingInteger(*text);
    const bool isNumber = std::to_string(number) == *text;
    return {"\"" + *text + "\"", isNumber ? std::optional(number) : std::nullopt};
  }
  if (value.as<uint64_t>() != nullptr) return {translated("larger than any number that fits"), std::nullopt};
  const bool isNumber =
      value.as<int64_t>() != nullptr || value.as<double>() != nullptr || value.as<bool>() != nullptr;
  if (!isNumber) return {translated("no number"), std::nullopt};
  const int64_t number = integerValue(&value);
  return {std::to_string(number), number};
}

std::string keyPath(const Setting& row) {
  return row.service != nullptr ? std::string(row.service) + "/" + row.key : row.key;
}

// A stored number that the setting cannot have. Zero, where it stands for the standard value, can be.
std::optional<FileFinding> findingIn(const PropertyList& dictionary, const FileState& state,
                                     const Setting& row, const Range& range) {
  const PropertyList* home = row.service != nullptr ? dictionary.find(row.service) : &dictionary;
  const PropertyList* value = home != nullptr ? home->find(row.key) : nullptr;
  if (value == nullptr) return std::nullopt;
  const ShownValue shown = shownValue(*value);
  const bool fits = shown.number && *shown.number >= range.least && *shown.number <= range.most;
  if (fits || (shown.number == 0 && row.standard != 0)) return std::nullopt;
  return FileFinding{
      .file = state.path,
      .label = translated(state.file.label),
      .damaged = false,
      .sentence = sentence(
          "\"{1}\" in {2} is {3}; it should be a whole number from {4} to {5}.",
          {keyPath(row), state.path, shown.text, std::to_string(range.least), std::to_string(range.most)}),
      .key = keyPath(row),
      .setting = "",
      .copyTime = "",
      .group = state.file.group};
}

void addValueFindings(const FileState& state, SettingsTable table, Platform& computer,
                      const InterfaceDescription& interface, const NVKServerPrefs& pane,
                      std::vector<FileFinding>& findings) {
  const auto dictionary = computer.propertyLists.dictionaryWithContentsOfFile(state.path);
  if (!dictionary) return;
  for (const Setting& row : table) {
    const auto range = rangeOf(row, interface, pane);
    auto finding = range ? findingIn(*dictionary, state, row, *range) : std::nullopt;
    if (!finding) continue;
    const ControlDescription* control = interface.find((pane.*row.controls[0]).name());
    if (control != nullptr) finding->setting = control->setting;
    findings.push_back(std::move(*finding));
  }
}

SettingsTable tableOf(const StoredFile& file) {
  return file.byTool ? SettingsTable() : groupOf(file.group).settings();
}

bool isIn(SettingsTable table, const Setting& row) {
  return std::ranges::any_of(table, [&](const Setting& known) { return &known == &row; });
}

}  // namespace

std::string capitalised(std::string text) {
  if (!text.empty() && text.front() >= 'a' && text.front() <= 'z') {
    text.front() = static_cast<char>(text.front() - 'a' + 'A');
  }
  return text;
}

const std::array<StoredFile, kStoredFileCount>& storedFiles() {
  return kFiles;
}

const StoredFile& fileOfRow(const Setting& row) {
  const auto byTool = [&](const StoredFile& file) { return file.byTool && file.box == row.controls[0]; };
  if (const auto* file = std::ranges::find_if(kFiles, byTool); file != kFiles.end()) return *file;
  return *std::ranges::find_if(kFiles, [&](const StoredFile& file) { return isIn(tableOf(file), row); });
}

bool wouldSave(const NVKServerPrefs& pane, const StoredFile& file) {
  return file.byTool ? pane.differsFromStored(pane.*file.box) : wouldSave(pane, file.group);
}

std::string writtenPath(const NVKServerPrefs& pane, const StoredFile& file, const std::string& path) {
  return file.temporaryName != nullptr ? pane.getTempFilePath(file.temporaryName) : path;
}

bool holdSame(const FileStates& one, const FileStates& other) {
  return std::ranges::equal(one, other,
                            [](const FileState& a, const FileState& b) { return a.holdsSameAs(b); });
}

std::string damageOf(const StoredFile& file, std::string_view bytes) {
  if (bytes.empty()) return "";
  if (file.isLines) return isUtf8(bytes) ? "" : translated("it holds bytes that are no UTF-8 text");
  PropertyListDamage damage;
  const auto list = decodePropertyList(bytes, damage);
  if (!list) return damage.sentence();
  return list->as<PropertyList::Dictionary>() != nullptr ? "" : translated(kNoDictionary);
}

bool FileState::holdsSameAs(const FileState& other) const {
  return content.kind == other.content.kind && content.bytes == other.content.bytes;
}

FileStates inspectFiles(Platform& computer, SettingsFiles& files) {
  FileStates states;
  for (const StoredFile& file : kFiles) {
    const std::string path = computer.propertyLists.stringByExpandingTildeInPath(file.path);
    FileContent content = files.inspect(path);
    std::string damage = damageIn(file, path, content, computer);
    states.push_back({file, path, std::move(content), std::move(damage)});
  }
  return states;
}

std::vector<FileFinding> findingsOf(const FileStates& states, Platform& computer, SettingsFiles& files,
                                    const InterfaceDescription& interface, const NVKServerPrefs& pane) {
  std::vector<FileFinding> findings;
  for (const FileState& state : states) {
    if (!state.damage.empty()) findings.push_back(damagedFile(state, files));
  }
  for (const FileState& state : states) {
    if (!state.damage.empty()) continue;
    addValueFindings(state, tableOf(state.file), computer, interface, pane, findings);
  }
  return findings;
}

}  // namespace norvik
