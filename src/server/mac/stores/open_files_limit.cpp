// The open files limit: the kernel's values of now, and the line "limit maxfiles SOFT HARD" that the launch
// daemon applies at the next start of the computer.
#include "src/server/mac/stores/open_files_limit.h"

#include <array>
#include <string>

#include "src/server/mac/control/tool_commands.h"
#include "src/server/mac/pane/pane.h"
#include "src/server/mac/platform/log.h"
#include "src/server/mac/platform/platform.h"
#include "src/server/mac/stores/line_file.h"
#include "src/server/mac/stores/settings.h"
#include "src/server/mac/text/trim.h"
#include "src/server/mac/text/utf8.h"

namespace norvik {

namespace {

constexpr const char* kNoLimit = "default";
constexpr const char* kAdjustTitles[] = {"Adjust", "Adjust", "Reset", "Revert"};  // by action

bool isSet(const NVKServerLimit& limit) {
  return limit.hard > 0 && limit.soft > 0;
}

bool atLeast(const NVKServerLimit& limit, const NVKServerLimit& other) {
  return limit.soft >= other.soft && limit.hard >= other.hard;
}

int32_t limitIn(std::string_view piece) {
  return static_cast<int32_t>(leadingInteger(piece));
}

// One number sets both limits; a later line overrides an earlier one.
void readLimitLine(const std::string& line, NVKServerLimit& limit) {
  const auto pieces = piecesOf(line);
  if (pieces.size() < 3 || pieces[0] != "limit" || pieces[1] != "maxfiles") return;
  limit.soft = limit.hard = limitIn(pieces[2]);
  if (pieces.size() >= 4) limit.hard = limitIn(pieces[3]);
}

// Any limit, commented out or not, counts as the limit's line: the second piece is intentionally not
// looked at.
bool isLimitLine(const std::string& line) {
  const auto pieces = piecesOf(line);
  return !pieces.empty() && (pieces[0] == "limit" || pieces[0] == "#limit");
}

std::string limitLine(const NVKServerLimit& limit) {
  return "limit maxfiles " + std::to_string(limit.soft) + " " + std::to_string(limit.hard);
}

// The old line with a reset limit, kept as a comment.
std::string commentedLine(const std::string& line) {
  return line.front() == '#' ? line : "#" + line;
}

StringsArray withLimit(const StringsArray& lines, const NVKServerLimit& limit) {
  StringsArray result;
  bool found = false;
  for (const std::string& line : lines) {
    if (!isLimitLine(line)) {
      result.push_back(line);
      continue;
    }
    found = true;
    result.push_back(isSet(limit) ? limitLine(limit) : commentedLine(line));
  }
  if (!found && isSet(limit)) result.push_back(limitLine(limit));
  return result;
}

void showLimit(Control& field, int32_t limit) {
  if (limit > 0) {
    field.setIntegerValue(limit);
  } else {
    field.setStringValue(kNoLimit);
  }
}

// A value from an earlier reading stays if the tool is refused.
void readKernelValue(NVKServerPrefs& pane, const char* name, int32_t& value) {
  std::array<char, 256> output{};
  const ToolCommand& command = kReadKernelValue;
  if (pane.runCmdToBuf(output.data(), static_cast<int32_t>(output.size()), command.tool, command.arguments[0],
                       name)) {
    const std::string_view text = output.data();
    value = isUtf8(text) ? limitIn(trimmed(text)) : 0;
  }
  if (value == 0) logFailure("Norvik[E]: Could not load system limit: %s", name);
}

}  // namespace

bool NVKServerPrefs::loadMaxFiles() {
  NVKServerLimits& limits = m_admin_maxFiles;
  if (authorized()) {
    readKernelValue(*this, kKernelMaxFiles, limits.system.hard);
    readKernelValue(*this, kKernelMaxFilesPerProcess, limits.system.soft);
  }
  limits.launchd = {};
  limits.action = kLimitAdjust;
  for (const std::string& line : loadStringsArray(kLaunchdConfigFile).value_or(StringsArray())) {
    readLimitLine(line, limits.launchd);
  }
  if (!isSet(limits.system)) {
    limits.action = kLimitUnknown;
  } else if (!isSet(limits.launchd)) {
    limits.launchd = {};
  } else if (atLeast(limits.launchd, limits.system)) {
    limits.action = kLimitReset;
  }
  limits.backup = limits.launchd;
  displayMaxFiles();
  return true;
}

void NVKServerPrefs::displayMaxFiles() {
  showLimit(ib_admin_edbox_maxFHard, m_admin_maxFiles.launchd.hard);
  showLimit(ib_admin_edbox_maxFSoft, m_admin_maxFiles.launchd.soft);
  ib_admin_button_maxFAdjust.setTitle(kAdjustTitles[m_admin_maxFiles.action]);
  ib_admin_button_maxFAdjust.setTransparent(m_admin_maxFiles.action == kLimitUnknown);
}

void NVKServerPrefs::changeMaxFiles() {
  NVKServerLimits& limits = m_admin_maxFiles;
  if (limits.action == kLimitUnknown || !authorized()) return;
  if (limits.action == kLimitRevert) {
    limits.launchd = limits.backup;
    limits.action = atLeast(limits.launchd, limits.system) ? kLimitReset : kLimitAdjust;
  } else if (limits.action == kLimitReset) {
    const int answer = platform().alerts.NSRunAlertPanel(
        "Resetting Open Files Limit",
        "Are you sure you want to reset the limit to the default value, which may be less than the current value?",
        "Yes", "No", nullptr);
    if (answer != NSAlertDefaultReturn) return;
    limits.launchd = {};
    limits.action = kLimitRevert;
  } else {
    limits.launchd = limits.system;
    limits.action = kLimitRevert;
  }
  displayMaxFiles();
}

bool NVKServerPrefs::maxFilesChanged() const {
  return m_admin_maxFiles.action == kLimitRevert;
}

bool NVKServerPrefs::saveMaxFiles() {
  if (!maxFilesChanged()) return true;
  if (!authorized()) {
    logFailure("Norvik[E]: Limits could not be saved.");
    return false;
  }
  const StringsArray lines = loadStringsArray(kLaunchdConfigFile).value_or(StringsArray());
  const StringsArray changed = withLimit(lines, m_admin_maxFiles.launchd);
  const std::string temporary = getTempFilePath(kLaunchdConfigTempName);
  bool saved = saveStringsArray(temporary.c_str(), &changed);
  if (saved) {
    saved = installFile({kMoveLaunchdConfig, kChmodLaunchdConfig, kChownLaunchdConfig}, temporary,
                        kLaunchdConfigFile);
  } else {
    logFailure(kCouldNotWriteFile, temporary);
  }
  loadMaxFiles();
  return saved;
}

}  // namespace norvik
