// One function for each kind of work. The arguments are those of a row of the table.
#include "src/helper/steps.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <new>
#include <system_error>

#include "src/adapters/property_lists/codec.h"
#include "src/helper/safe_files.h"
#include "src/server/mac/text/utf8.h"

namespace norvik::helper {

namespace {

constexpr mode_t kReadableByAll = 0644;

// The pane writes property lists as XML, so nothing else has to be understood.
constexpr std::string_view kXmlBeginning = "<?xml";

bool isDictionary(const std::optional<PropertyList>& list) {
  return list && list->as<PropertyList::Dictionary>() != nullptr;
}

void checkList(const std::string& path, std::string_view bytes) {
  if (!bytes.starts_with(kXmlBeginning) || !isDictionary(decodePropertyList(bytes)))
    throw StepFailed(path + ": is not a property list with a dictionary");
}

void checkLines(const std::string& path, std::string_view bytes) {
  if (!isUtf8(bytes) || bytes.find('\0') != std::string_view::npos)
    throw StepFailed(path + ": is not a text");
}

// "-f", the temporary path, the target.
void install(const Computer& computer, const AllowedLine& line, uid_t caller) {
  const bool isList = line.row->work == Work::installList;
  const CheckedFile temporary = openOwn(computer.root + line.arguments[1], caller);
  const std::string bytes = readAll(temporary);
  (isList ? checkList : checkLines)(temporary.path, bytes);
  replaceFile(computer.root + line.arguments[2], bytes, computer.superUser,
              isList ? Previous::keepBeside : Previous::forget);
  removeName(temporary);
}

// The mode or the owner, the target.
void setMode(const Computer& computer, const AllowedLine& line) {
  const CheckedFile target = openChecked(computer.root + line.arguments[1]);
  if (::fchmod(target.file.number(), kReadableByAll) != 0)
    throw StepFailed(target.path + ": " + std::generic_category().message(errno));
}

void setOwner(const Computer& computer, const AllowedLine& line) {
  constexpr gid_t kSameGroup = static_cast<gid_t>(-1);
  const CheckedFile target = openChecked(computer.root + line.arguments[1]);
  if (::fchown(target.file.number(), computer.superUser, kSameGroup) != 0)
    throw StepFailed(target.path + ": " + std::generic_category().message(errno));
}

int64_t numberOf(const std::string& text) {
  int64_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

// What a row says after the key: "-int" and a number, or "-dict" with keys and such numbers.
PropertyList preferenceValue(std::span<const std::string> words) {
  if (words[0] == "-int") return PropertyList(numberOf(words[1]));
  PropertyList::Dictionary entries;
  for (std::size_t i = 1; i + 2 < words.size(); i += 3) entries[words[i]] = numberOf(words[i + 2]);
  return PropertyList(std::move(entries));
}

// "write", the path without its ending, the key, the value. A file that cannot be understood stays as it is:
// a fresh one would drop what others keep there.
void writePreference(const Computer& computer, const AllowedLine& line) {
  const std::string path = computer.root + line.arguments[1] + ".plist";
  std::optional<PropertyList> list = PropertyList();
  if (const std::optional<std::string> bytes = readExisting(path)) list = decodePropertyList(*bytes);
  if (!isDictionary(list)) throw StepFailed(path + ": is not a property list with a dictionary");
  (*list->as<PropertyList::Dictionary>())[line.arguments[2]] =
      preferenceValue(std::span(line.arguments).subspan(3));
  makeFoldersAbove(path);
  replaceFile(path, encodeXmlPropertyList(*list), computer.superUser, Previous::forget);
}

// "-n", the name that the Mac's kernel has for the value. Numbers above 32 bits mean no limit.
std::string kernelValue(const Computer& computer, const AllowedLine& line) {
  const bool isOfSystem = line.arguments[1] == kKernelMaxFiles;
  const std::string path = computer.root + (isOfSystem ? "/proc/sys/fs/file-max" : "/proc/sys/fs/nr_open");
  const Descriptor file = openForReading(path);
  std::string text(32, '\0');
  const ssize_t count = file ? ::read(file.number(), text.data(), text.size()) : -1;
  uint64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + std::max<ssize_t>(count, 0), number);
  if (error != std::errc()) throw StepFailed(path + ": cannot be read");
  constexpr uint64_t kLargest = std::numeric_limits<int32_t>::max();
  return std::to_string(std::min(number, kLargest)) + "\n";
}

std::string outputOf(const Computer& computer, const AllowedLine& line, uid_t caller) {
  switch (line.row->work) {
    case Work::installList:
    case Work::installLines:
      install(computer, line, caller);
      return {};
    case Work::setMode:
      setMode(computer, line);
      return {};
    case Work::setOwner:
      setOwner(computer, line);
      return {};
    case Work::writePreference:
      writePreference(computer, line);
      return {};
    case Work::readKernelValue:
      return kernelValue(computer, line);
    case Work::startTool:
      break;
  }
  throw StepFailed(std::string(line.row->command.tool) + ": no process can be made");
}

}  // namespace

StepOutcome carryOut(const Computer& computer, const AllowedLine& line, uid_t caller) {
  try {
    return {.status = 0, .output = outputOf(computer, line, caller), .words = {}};
  } catch (const StepFailed& failure) {
    return {.status = 1, .output = {}, .words = failure.what()};
  } catch (const std::bad_alloc&) {
    return {.status = 1, .output = {}, .words = "there is not enough memory"};
  }
}

}  // namespace norvik::helper
