// The notification bus.
#include "sandbox/bus.h"

#include <sys/un.h>

#include <array>
#include <cctype>
#include <charconv>
#include <cstdio>
#include <stdexcept>

#include "sandbox/program.h"

namespace norvik::sandbox {

namespace fs = std::filesystem;

namespace {

// Names the root, which distinguishes the sandbox's bus from all others.
std::string configurationArgument(const Root& root) {
  return "--config-file=" + root.own("bus.conf").string();
}

// In an address, all but the plainest characters are escaped.
std::string addressOf(const Root& root) {
  const std::string path = root.own("bus.socket");
  std::string address = "unix:path=";
  if (path.size() >= sizeof(sockaddr_un{}.sun_path))
    throw std::runtime_error(path + ": too long for a socket; choose a folder with a shorter path");
  for (const char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    if (std::isalnum(byte) || std::string_view("-_/.").find(c) != std::string_view::npos) {
      address += c;
      continue;
    }
    std::array<char, 4> escaped{};
    std::snprintf(escaped.data(), escaped.size(), "%%%02x", byte);
    address += escaped.data();
  }
  return address;
}

constexpr const char* kConfiguration[] = {
    "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\"\n"
    " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
    "<busconfig>\n"
    "  <type>session</type>\n"
    "  <listen>",
    "</listen>\n"
    "  <auth>EXTERNAL</auth>\n"
    "  <policy context=\"default\">\n"
    "    <allow send_destination=\"*\" eavesdrop=\"true\"/>\n"
    "    <allow eavesdrop=\"true\"/>\n"
    "    <allow own=\"*\"/>\n"
    "  </policy>\n"
    "</busconfig>\n"};

}  // namespace

std::optional<pid_t> runningBus(const Root& root) {
  const std::string wanted = '\0' + configurationArgument(root) + '\0';
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator("/proc", error)) {
    const std::string name = entry.path().filename();
    pid_t pid = 0;
    const auto [end, failure] = std::from_chars(name.data(), name.data() + name.size(), pid);
    if (failure != std::errc{} || *end != '\0') continue;
    const auto command = readFile(entry.path() / "cmdline");
    if (command && command->find(wanted) != std::string::npos) return pid;
  }
  return std::nullopt;
}

void startBus(const Root& root) {
  if (runningBus(root)) return;
  const std::string address = addressOf(root);
  fs::remove(root.own("bus.socket"));
  replaceFile(root.own("bus.conf"), kConfiguration[0] + address + kConfiguration[1]);
  // It goes into the background when it listens.
  if (runAndWait(root, "dbus-daemon", {configurationArgument(root), "--fork", "--nosyslog", "--nopidfile"}) !=
      0)
    throw std::runtime_error("cannot start dbus-daemon");
  replaceFile(root.own("bus"), address + "\n");
}

}  // namespace norvik::sandbox
