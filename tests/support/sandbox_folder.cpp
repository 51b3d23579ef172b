// The computer's folders, applications and bus in a temporary folder.
#include "tests/support/sandbox_folder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

#include "tests/support/files.h"
#include "tests/support/session_bus.h"

namespace norvik {

namespace fs = std::filesystem;

namespace {

const char* const kFolders[] = {
    "/tmp",         "/etc/norvik", "/var/run", "/Library/Preferences", "/Users/user/Library/Preferences",
    "/Applications"};

std::string infoPropertyList(const std::string& identifier) {
  return "<plist version=\"1.0\"><dict><key>CFBundleIdentifier</key><string>" + identifier +
         "</string></dict></plist>\n";
}

}  // namespace

SandboxFolder::SandboxFolder() {
  fs::permissions(folder_.path(), fs::perms(0755));
  for (const char* folder : kFolders) fs::create_directories(onDisk(folder));
}

void SandboxFolder::put(const std::string& path, const std::string& bytes) {
  writeFile(onDisk(path), bytes);
}

std::optional<std::string> SandboxFolder::read(const std::string& path) const {
  return readFile(onDisk(path));
}

void SandboxFolder::putScript(const std::string& path, const std::string& commands) {
  writeScript(onDisk(path), commands);
}

std::string SandboxFolder::putApplication(const std::string& bundle, const std::string& packageInfo,
                                          const std::string& identifier) {
  const std::string contents = bundle + "/Contents/";
  put(contents + "PkgInfo", packageInfo);
  if (!identifier.empty()) put(contents + "Info.plist", infoPropertyList(identifier));
  std::string program = contents + "MacOS/program";
  fs::create_directories(onDisk(contents + "MacOS"));
  fs::copy_file("/bin/sleep", onDisk(program), fs::copy_options::overwrite_existing);
  return program;
}

pid_t SandboxFolder::start(const Words& words, std::optional<uid_t> user) {
  RunningProgram program(words, {.user = user});
  const pid_t pid = program.pid();
  programs_.erase(pid);  // an older one that has ended may have had the same id
  programs_.emplace(pid, std::move(program));
  return pid;
}

void SandboxFolder::end(pid_t pid) {
  programs_.erase(pid);
}

std::optional<int> SandboxFolder::endedBy(pid_t pid, std::chrono::milliseconds limit) {
  const auto ending = programs_.at(pid).ending(limit);
  return ending ? std::optional(ending->signal) : std::nullopt;
}

void SandboxFolder::startBus() {
  start({"/usr/bin/dbus-daemon", "--session", "--nofork", "--nopidfile", "--address=" + busAddress()});
  ASSERT_TRUE(eventually([this] { return takesConnections(onDisk("/bus")); })) << "no message bus";
}

}  // namespace norvik
