// The table of what is allowed, and the comparison with it.
#include "src/helper/allowed_lines.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace norvik::helper {

namespace {

constexpr const char* kSaveSettings = "com.veltrane.norvik.save-settings";
constexpr const char* kControlServer = "com.veltrane.norvik.control-server";
constexpr const char* kOpenManagers = "com.veltrane.norvik.open-managers";
constexpr const char* kReadLimits = "com.veltrane.norvik.read-limits";
constexpr const char* kRestartComputer = "com.veltrane.norvik.restart-computer";

constexpr const char* kTileSizes[] = {"0", "256"};
constexpr const char* kIdleTimes[] = {"0", "1200"};
constexpr const char* kKernelValues[] = {kKernelMaxFiles, kKernelMaxFilesPerProcess};

// clang-format off
constexpr AllowedRow kRows[] = {
    {kStopServer,         Work::startTool,       kControlServer,   nullptr,                nullptr},
    {kStartServer,        Work::startTool,       kControlServer,   nullptr,                nullptr},
    {kManageDisplays,     Work::startTool,       kOpenManagers,    nullptr,                nullptr},
    {kManageAccess,       Work::startTool,       kOpenManagers,    nullptr,                nullptr},
    {kApplyConfig,        Work::startTool,       kControlServer,   nullptr,                nullptr},
    {kReboot,             Work::startTool,       kRestartComputer, nullptr,                nullptr},
    {kSetTileSize,        Work::writePreference, kSaveSettings,    nullptr,                kTileSizes},
    {kSetLoginIdleTime,   Work::writePreference, kSaveSettings,    nullptr,                kIdleTimes},
    {kMoveServerConfig,   Work::installList,     kSaveSettings,    kServerConfigTempName,  nullptr},
    {kChmodServerConfig,  Work::setMode,         kSaveSettings,    nullptr,                nullptr},
    {kChownServerConfig,  Work::setOwner,        kSaveSettings,    nullptr,                nullptr},
    {kMoveLaunchdConfig,  Work::installLines,    kSaveSettings,    kLaunchdConfigTempName, nullptr},
    {kChmodLaunchdConfig, Work::setMode,         kSaveSettings,    nullptr,                nullptr},
    {kChownLaunchdConfig, Work::setOwner,        kSaveSettings,    nullptr,                nullptr},
    {kReadKernelValue,    Work::readKernelValue, kReadLimits,      nullptr,                kKernelValues},
};
// clang-format on

static_assert(std::size(kRows) == std::size(kToolCommands), "every row of the tool command table is here");

bool mayBeInFreePlace(const AllowedRow& row, const std::string& text) {
  if (row.temporaryName != nullptr) return isTemporaryPath(text, row.temporaryName);
  return row.choices != nullptr && (text == row.choices[0] || text == row.choices[1]);
}

std::size_t argumentCount(const ToolCommand& command) {
  const auto end = std::find(std::begin(command.arguments), std::end(command.arguments), nullptr);
  return static_cast<std::size_t>(end - std::begin(command.arguments));
}

bool equals(const AllowedRow& row, std::string_view tool, const Words& arguments) {
  if (tool != row.command.tool || arguments.size() != argumentCount(row.command)) return false;
  const std::string* free = nullptr;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const char* const expected = row.command.arguments[i];
    if (expected != kVariable) {
      if (arguments[i] != expected) return false;
    } else if (free != nullptr) {
      if (arguments[i] != *free) return false;
    } else {
      free = &arguments[i];
      if (!mayBeInFreePlace(row, *free)) return false;
    }
  }
  return true;
}

}  // namespace

std::span<const AllowedRow> allowedRows() {
  return kRows;
}

std::optional<AllowedLine> allowedLine(std::string_view tool, const Words& arguments) {
  const auto row = std::find_if(std::begin(kRows), std::end(kRows),
                                [&](const AllowedRow& r) { return equals(r, tool, arguments); });
  if (row == std::end(kRows)) return std::nullopt;
  return AllowedLine{row, arguments};
}

std::optional<int32_t> processIdIn(std::string_view text) {
  int32_t pid = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), pid);
  const bool isNumber = error == std::errc() && end == text.data() + text.size() && pid > 0;
  return isNumber && std::to_string(pid) == text ? std::optional(pid) : std::nullopt;
}

bool isTemporaryPath(std::string_view path, std::string_view name) {
  for (const std::string_view part : {std::string_view(kTemporaryFolder), std::string_view(kTemporaryPrefix),
                                      name, std::string_view(".")}) {
    if (!path.starts_with(part)) return false;
    path.remove_prefix(part.size());
  }
  return processIdIn(path).has_value();
}

}  // namespace norvik::helper
