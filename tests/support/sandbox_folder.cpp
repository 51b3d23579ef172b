// A folder below the system's folder for temporary files, and children in it.
#include "tests/support/sandbox_folder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <thread>

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

// A socket is there before anybody listens on it.
bool takesConnections(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const bool connected = ::connect(socket, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
  ::close(socket);
  return connected;
}

// In the child. What the program says is not for the tests' output.
[[noreturn]] void become(const std::vector<std::string>& words, std::optional<uid_t> user) {
  std::vector<char*> argv;
  argv.reserve(words.size() + 1);
  for (const std::string& word : words) argv.push_back(const_cast<char*>(word.c_str()));
  argv.push_back(nullptr);
  const int nowhere = ::open("/dev/null", O_RDWR);
  ::dup2(nowhere, STDIN_FILENO);
  ::dup2(nowhere, STDOUT_FILENO);
  ::dup2(nowhere, STDERR_FILENO);
  if (user && ::setuid(*user) != 0) ::_exit(126);
  ::execv(argv[0], argv.data());
  ::_exit(127);
}

}  // namespace

SandboxFolder::SandboxFolder() {
  std::string pattern = fs::temp_directory_path().string() + "/norvik-contract.XXXXXX";
  if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder for the test");
  path_ = pattern;
  ::chmod(path_.c_str(), 0755);
  for (const char* folder : kFolders) fs::create_directories(onDisk(folder));
}

SandboxFolder::~SandboxFolder() {
  while (!running_.empty()) end(running_.back());
  std::error_code error;
  fs::remove_all(path_, error);
  EXPECT_FALSE(error) << path_ << ": " << error.message();
}

void SandboxFolder::put(const std::string& path, const std::string& bytes) {
  fs::create_directories(fs::path(onDisk(path)).parent_path());
  std::ofstream file(onDisk(path), std::ios::binary | std::ios::trunc);
  file << bytes;
  file.close();
  ASSERT_TRUE(file.good()) << path;
}

std::optional<std::string> SandboxFolder::read(const std::string& path) const {
  std::ifstream file(onDisk(path), std::ios::binary);
  if (!file) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(file), {});
}

void SandboxFolder::putScript(const std::string& path, const std::string& commands) {
  fs::remove(onDisk(path));  // one that is just being started could not be written over
  put(path, "#!/bin/sh\n" + commands + "\n");
  fs::permissions(onDisk(path), fs::perms(0755));
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

pid_t SandboxFolder::start(const std::vector<std::string>& words, std::optional<uid_t> user) {
  // Close-on-exec: reading from it ends when the child has become its program.
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  const pid_t child = ::fork();
  if (child == 0) become(words, user);
  ::close(ends[1]);
  char byte = 0;
  while (::read(ends[0], &byte, 1) < 0 && errno == EINTR) {
  }
  ::close(ends[0]);
  if (child < 0) throw std::runtime_error("no process");
  running_.push_back(child);
  return child;
}

void SandboxFolder::end(pid_t pid) {
  if (std::erase(running_, pid) == 0 || statuses_.contains(pid)) return;
  ::kill(pid, SIGKILL);
  ::waitpid(pid, nullptr, 0);
}

std::optional<int> SandboxFolder::endedBy(pid_t pid, std::chrono::milliseconds limit) {
  int status = 0;
  const auto hasEnded = [&] { return statuses_.contains(pid) || ::waitpid(pid, &status, WNOHANG) == pid; };
  if (!eventually(hasEnded, limit)) return std::nullopt;
  status = statuses_.emplace(pid, status).first->second;
  return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

void SandboxFolder::startBus() {
  start({"/usr/bin/dbus-daemon", "--session", "--nofork", "--nopidfile", "--address=" + busAddress()});
  ASSERT_TRUE(eventually([this] { return takesConnections(onDisk("/bus")); })) << "no message bus";
}

bool eventually(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
  const auto end = std::chrono::steady_clock::now() + limit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

}  // namespace norvik
