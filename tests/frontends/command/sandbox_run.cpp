// Starts the programs and looks at what they leave.
#include "tests/frontends/command/sandbox_run.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <pty.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "src/adapters/property_lists/codec.h"

namespace norvik::command {

namespace fs = std::filesystem;

namespace {

constexpr const char* kSpeed = "20";

std::string contentOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

[[noreturn]] void become(const Words& words) {
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  execv(arguments[0], arguments.data());
  _exit(127);
}

void redirect(int descriptor, const fs::path& path, int flags) {
  const int file = open(path.c_str(), flags | O_CLOEXEC, 0600);
  if (file == -1 || dup2(file, descriptor) == -1) _exit(126);
}

pid_t spawn(const Words& words, const fs::path& home, const fs::path& out, const fs::path& err) {
  const pid_t child = fork();
  if (child != 0) return child;
  setenv("HOME", home.c_str(), 1);
  redirect(STDIN_FILENO, "/dev/null", O_RDONLY);
  redirect(STDOUT_FILENO, out, O_WRONLY | O_CREAT | O_TRUNC);
  redirect(STDERR_FILENO, err, O_WRONLY | O_CREAT | O_TRUNC);
  become(words);
}

int statusOf(pid_t child) {
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string programPath(const std::string& name) {
  return name.starts_with('/') ? name : std::string(NORVIK_BIN_DIR) + "/" + name;
}

// A terminal that is closed answers reading with an error.
std::string readAll(int terminal) {
  std::string text;
  std::array<char, 4096> block{};
  for (ssize_t got; (got = read(terminal, block.data(), block.size())) > 0;) {
    text.append(block.data(), static_cast<std::size_t>(got));
  }
  std::erase(text, '\r');
  return text;
}

sockaddr_in loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<uint16_t>(port));
  return address;
}

}  // namespace

Result runProgram(const std::string& name, const Words& words, const fs::path& home) {
  Words all{programPath(name)};
  all.insert(all.end(), words.begin(), words.end());
  const fs::path out = home / ".out", err = home / ".err";
  const int status = statusOf(spawn(all, home, out, err));
  return {status, contentOf(out), contentOf(err)};
}

SandboxRun::SandboxRun() {
  std::string name = (fs::temp_directory_path() / "norvikctl-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  folder_ = name;
  const Result result =
      runProgram("norvik-sandbox", {"start", folder().string(), "--speed", kSpeed}, folder_);
  if (result.status != 0) throw std::runtime_error("norvik-sandbox start: " + result.err);
}

SandboxRun::~SandboxRun() {
  runProgram("norvik-sandbox", {"stop", folder().string()}, folder_);
  std::error_code error;
  fs::remove_all(folder_, error);
}

Words SandboxRun::commandLine(const Words& words) const {
  Words all{"--root", folder().string()};
  all.insert(all.end(), words.begin(), words.end());
  return all;
}

Result SandboxRun::run(const Words& words) const {
  return runProgram("norvikctl", commandLine(words), folder_);
}

pid_t SandboxRun::start(const Words& words, const std::string& outputName) const {
  Words all = commandLine(words);
  all.insert(all.begin(), programPath("norvikctl"));
  return spawn(all, folder_, beside(outputName), beside(outputName + ".err"));
}

Result SandboxRun::runAtTerminal(const Words& words, const std::string& typed) const {
  Words all = commandLine(words);
  all.insert(all.begin(), programPath("norvikctl"));
  int terminal = -1;
  const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
  if (child == 0) become(all);
  const bool written = ::write(terminal, typed.data(), typed.size()) == static_cast<ssize_t>(typed.size());
  const std::string out = readAll(terminal);
  const int status = statusOf(child);
  close(terminal);
  return {written ? status : -1, out, ""};
}

nlohmann::json SandboxRun::json(Words words) const {
  words.emplace_back("--json");
  return nlohmann::json::parse(run(words).out, nullptr, false);
}

std::string SandboxRun::read(const std::string& path) const {
  return contentOf(folder() / path.substr(1));
}

void SandboxRun::write(const std::string& path, const std::string& content) const {
  std::ofstream(folder() / path.substr(1), std::ios::binary) << content;
}

void SandboxRun::replaceProgram(const std::string& path, const std::string& commands) const {
  const fs::path file = folder() / path.substr(1);
  fs::remove(file);
  write(path, "#!/bin/sh\n" + commands + "\n");
  fs::permissions(file, fs::perms::owner_all);
}

PropertyList SandboxRun::list(const std::string& path) const {
  return decodePropertyList(read(path)).value_or(PropertyList("no property list"));
}

std::map<std::string, std::string> SandboxRun::files() const {
  std::map<std::string, std::string> all;
  for (const auto& entry : fs::recursive_directory_iterator(folder())) {
    const std::string path = entry.path().lexically_relative(folder()).string();
    if (entry.is_regular_file() && !path.starts_with(".norvik/")) all[path] = contentOf(entry.path());
  }
  return all;
}

bool SandboxRun::log(const std::string& name, const std::string& text) const {
  return read("/.norvik/log/" + name).find(text) != std::string::npos;
}

Listener::Listener() : socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)), port_(0) {
  sockaddr_in address = loopback(0);
  socklen_t size = sizeof address;
  const auto* generic = reinterpret_cast<const sockaddr*>(&address);
  if (bind(socket_, generic, size) == -1 || listen(socket_, 1) == -1 ||
      getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &size) == -1) {
    throw std::runtime_error("no port");
  }
  port_ = ntohs(address.sin_port);
}

Listener::~Listener() {
  close(socket_);
}

int freePort() {
  return Listener().port();
}

bool connects(int port) {
  const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_in address = loopback(port);
  const bool connected = connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  close(socket);
  return connected;
}

bool eventually(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
  const auto end = std::chrono::steady_clock::now() + limit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return true;
}

int countOf(const std::string& text, const std::string& part) {
  int count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) {
    ++count;
  }
  return count;
}

}  // namespace norvik::command
