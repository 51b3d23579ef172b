// The tables of sockets say which of them listen, by their inodes; the files of a process say which sockets
// it has open. Nothing is kept between calls.
#include "src/adapters/linux/listening_ports.h"

#include <dirent.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <map>
#include <memory>
#include <sstream>

#include "src/adapters/posix/descriptors.h"
#include "src/adapters/posix/local_connection.h"

namespace norvik {

namespace {

using Inode = uint64_t;
using Inodes = std::set<Inode>;
using Listeners = std::map<Inode, uint16_t>;  // the port of each socket that listens

constexpr std::size_t kTableLimit = std::size_t{64} << 20U;
constexpr std::size_t kProcessFileLimit = 65536;
constexpr std::string_view kListenState = "0A";

template <typename Number>
std::optional<Number> numberIn(std::string_view text, int base) {
  Number number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

// A line of a table: number, local address and port, remote ones, state, five columns that do not matter
// here, and the inode. The line of headings has no state of listening.
void addListener(const std::string& line, Listeners& listeners) {
  std::istringstream words(line);
  std::string number, local, remote, state, skipped, inode;
  words >> number >> local >> remote >> state;
  if (state != kListenState) return;
  words >> skipped >> skipped >> skipped >> skipped >> skipped >> inode;
  const auto port = numberIn<uint16_t>(std::string_view(local).substr(local.rfind(':') + 1), 16);
  const auto socket = numberIn<Inode>(inode, 10);
  if (port && socket) listeners.emplace(*socket, *port);
}

// False where the table cannot be read.
bool readTable(const std::string& path, Listeners& listeners) {
  const auto table = readRegularFile(path, kTableLimit);
  if (!table) return false;
  std::istringstream lines(*table);
  for (std::string line; std::getline(lines, line);) addListener(line, listeners);
  return true;
}

// A computer may have no IPv6, and then has no second table.
std::optional<Listeners> listenersIn(const std::string& folder) {
  Listeners listeners;
  if (!readTable(folder + "/net/tcp", listeners)) return std::nullopt;
  readTable(folder + "/net/tcp6", listeners);
  return listeners;
}

struct OpenSockets {
  bool isGone = false;            // the process has ended
  std::optional<Inodes> sockets;  // nothing where they may not be seen
};

OpenSockets socketsOf(const std::string& folder, uint32_t pid) {
  constexpr std::string_view kLabel = "socket:[";
  const std::string path = processFile(pid, "fd", folder);
  const std::unique_ptr<DIR, int (*)(DIR*)> files(::opendir(path.c_str()), &::closedir);
  if (!files) return {errno == ENOENT, std::nullopt};
  Inodes found;
  while (const dirent* file = ::readdir(files.get())) {
    const std::string target = linkTarget(path + "/" + file->d_name);
    if (!target.starts_with(kLabel)) continue;
    const auto inode = numberIn<Inode>(
        std::string_view(target).substr(kLabel.size(), target.size() - kLabel.size() - 1), 10);
    if (inode) found.insert(*inode);
  }
  return {false, std::move(found)};
}

// The process that started this one, as the second word behind the program's name in parentheses, which may
// have parentheses itself.
uint32_t parentOf(const std::string& folder, uint32_t pid) {
  const auto status = readRegularFile(processFile(pid, "stat", folder), kProcessFileLimit);
  const std::size_t name = status ? status->rfind(')') : std::string::npos;
  if (name == std::string::npos) return 0;
  std::istringstream words(status->substr(name + 1));
  std::string state;
  uint32_t parent = 0;
  words >> state >> parent;
  return parent;
}

// The process and all that descend from it.
std::set<uint32_t> familyOf(const std::string& folder, uint32_t pid) {
  std::multimap<uint32_t, uint32_t> children;
  for (const uint32_t process : processesIn(folder)) children.emplace(parentOf(folder, process), process);
  std::set<uint32_t> family{pid};
  std::vector<uint32_t> unvisited{pid};
  while (!unvisited.empty()) {
    const auto [first, last] = children.equal_range(unvisited.back());
    unvisited.pop_back();
    for (auto child = first; child != last; ++child) {
      if (family.insert(child->second).second) unvisited.push_back(child->second);
    }
  }
  return family;
}

// The file's name, without what the system adds where the file was replaced; the shorter name that the
// process itself has where its program may not be seen.
std::string programOf(const std::string& folder, uint32_t pid) {
  constexpr std::string_view kReplaced = " (deleted)";
  std::string path = linkTarget(processFile(pid, "exe", folder));
  if (path.ends_with(kReplaced)) path.resize(path.size() - kReplaced.size());
  if (!path.empty()) return path.substr(path.rfind('/') + 1);
  std::string name = readRegularFile(processFile(pid, "comm", folder), kProcessFileLimit).value_or("");
  std::erase(name, '\n');
  return name;
}

}  // namespace

std::optional<std::set<uint16_t>> LinuxListeningPorts::portsOf(int32_t pid) {
  // A pid file may hold any number; below 1 it is no process's.
  if (pid < 1) return std::nullopt;
  const auto daemon = static_cast<uint32_t>(pid);
  Inodes open;
  for (const uint32_t process : familyOf(folder_, daemon)) {
    const OpenSockets held = socketsOf(folder_, process);
    if (held.sockets) open.insert(held.sockets->begin(), held.sockets->end());
    const bool hasEndedMeanwhile = held.isGone && process != daemon;
    if (!held.sockets && !hasEndedMeanwhile) return std::nullopt;
  }
  const auto listeners = listenersIn(folder_);
  if (!listeners) return std::nullopt;
  std::set<uint16_t> ports;
  for (const auto& [inode, port] : *listeners) {
    if (open.contains(inode)) ports.insert(port);
  }
  return ports;
}

std::optional<PortHolder> LinuxListeningPorts::holderOf(uint16_t port) {
  auto listeners = listenersIn(folder_);
  if (!listeners) return std::nullopt;
  std::erase_if(*listeners, [port](const auto& listener) { return listener.second != port; });
  if (listeners->empty()) return std::nullopt;
  for (const uint32_t process : processesIn(folder_)) {
    const OpenSockets held = socketsOf(folder_, process);
    if (!held.sockets) continue;
    const bool holds = std::ranges::any_of(
        *listeners, [&held](const auto& listener) { return held.sockets->contains(listener.first); });
    if (holds) return PortHolder{static_cast<int32_t>(process), programOf(folder_, process)};
  }
  return PortHolder{};
}

bool LinuxListeningPorts::accepts(uint16_t port) {
  return acceptsConnections(port);
}

}  // namespace norvik
