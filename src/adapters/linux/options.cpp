// The two usual computers: this system, and a sandbox.
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <charconv>
#include <cstdlib>

#include "src/adapters/linux/linux_computer.h"
#include "src/adapters/posix/descriptors.h"
#include "src/server/mac/text/trim.h"

namespace norvik {

namespace {

constexpr std::size_t kLongestSetting = 4096;

// A speed outside this range is a mistake in the file.
constexpr double kSlowest = 0.001;
constexpr double kFastest = 1000000;

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

std::string homeFolder() {
  std::string home = environment("HOME");
  const passwd* entry = home.empty() ? ::getpwuid(::getuid()) : nullptr;
  return entry != nullptr ? entry->pw_dir : home;
}

std::string stateFolder(const std::string& home) {
  const std::string base = environment("XDG_STATE_HOME");
  return (base.starts_with('/') ? base : home + "/.local/state") + "/norvik";  // a relative one is invalid
}

// The text of one of the sandbox's own files without white space around it; empty if the file is missing.
std::string setting(const std::string& directory, const char* name) {
  const std::string text = readRegularFile(directory + "/.norvik/" + name, kLongestSetting).value_or("");
  return std::string(trimmed(text, kBlanks));
}

double speed(const std::string& text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool isWhole = error == std::errc() && end == text.data() + text.size();
  return isWhole && value >= kSlowest && value <= kFastest ? value : 1;
}

}  // namespace

LinuxComputerOptions systemOptions() {
  LinuxComputerOptions options;
  options.home = homeFolder();
  options.busAddress = environment("DBUS_SESSION_BUS_ADDRESS");
  options.bundleFolders = {"/Applications", "/Library/PreferencePanes", options.home + "/Applications"};
  options.stateFolder = stateFolder(options.home);
  options.systemRights = true;
  return options;
}

LinuxComputerOptions sandboxOptions(const std::string& directory) {
  LinuxComputerOptions options;
  options.root = directory;
  options.home = "/Users/user";
  options.busAddress = setting(directory, "bus");
  options.speed = speed(setting(directory, "clock"));
  options.bundleFolders = {"/Applications"};
  options.stateFolder = "/.norvik/state";
  options.authorization = [directory] { return setting(directory, "authorization") == "granted"; };
  return options;
}

bool isSandbox(const std::string& directory) {
  struct stat status {};
  return ::stat((directory + "/.norvik").c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace norvik
