// Starts the system's own programs, as their packages do.
#include "tests/helper/own_computer.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "tests/support/files.h"

namespace norvik::helper {

namespace {

namespace fs = std::filesystem;

constexpr const char* kRules = "/etc/polkit-1/rules.d/10-test.rules";

std::string polkitProgram() {
  for (const char* path : {"/usr/lib/polkit-1/polkitd", "/usr/libexec/polkitd"}) {
    if (fs::exists(path)) return path;
  }
  return "polkitd";
}

}  // namespace

bool isOnBus(const char* name) {
  sd_bus* bus = nullptr;
  if (sd_bus_open_system(&bus) < 0) return false;
  sd_bus_creds* creds = nullptr;
  const bool isThere = sd_bus_get_name_creds(bus, name, SD_BUS_CREDS_EUID, &creds) >= 0;
  sd_bus_creds_unref(creds);
  sd_bus_flush_close_unref(bus);
  return isThere;
}

SystemLog::SystemLog() : socket_(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strcpy(address.sun_path, "/dev/log");
  ::unlink(address.sun_path);
  EXPECT_EQ(::bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  fs::permissions("/dev/log", fs::perms(0666));
  listener_ = std::thread([this] { listen(); });
}

SystemLog::~SystemLog() {
  ::shutdown(socket_, SHUT_RDWR);
  listener_.join();
  ::close(socket_);
}

void SystemLog::listen() {
  std::array<char, 8192> block;
  for (ssize_t count = 1; count > 0;) {
    count = ::recv(socket_, block.data(), block.size(), 0);
    if (count <= 0) return;
    const std::string line(block.data(), static_cast<std::size_t>(count));
    const std::size_t name = line.find("norvik-helper[");
    const std::lock_guard lock(mutex_);
    if (name != std::string::npos) lines_ += line.substr(line.find("]: ", name) + 3) + "\n";
  }
}

std::string SystemLog::ofHelper() {
  const std::lock_guard lock(mutex_);
  return lines_;
}

bool SystemLog::says(const std::string& text) {
  return eventually([&] { return ofHelper().find(text) != std::string::npos; });
}

void OwnComputerTest::SetUp() {
  const char* own = std::getenv("NORVIK_OWN_COMPUTER");
  if (own == nullptr || std::string(own) != "made")
    GTEST_SKIP() << "this needs the super-user, who can make name spaces";
  log_ = std::make_unique<SystemLog>();
  startBus();
  startPolkit();
}

void OwnComputerTest::startBus() {
  bus_.emplace(Words{"dbus-daemon", "--system", "--nofork", "--nopidfile"}, ProgramOptions{}, "/tmp/bus.log");
  ASSERT_TRUE(eventually([] { return isOnBus("org.freedesktop.DBus"); }));
}

// polkit reads its rules when it starts; it would notice changes only after a while.
void OwnComputerTest::startPolkit() {
  polkit_.reset();
  ASSERT_TRUE(eventually([] { return !isOnBus("org.freedesktop.PolicyKit1"); }));
  polkit_.emplace(Words{polkitProgram(), "--no-debug"},
                  ProgramOptions{.environment = {{"LD_PRELOAD", NORVIK_SESSION_STAND_IN}}},
                  "/tmp/polkit.log");
  ASSERT_TRUE(eventually([] { return isOnBus("org.freedesktop.PolicyKit1"); }));
}

void OwnComputerTest::openSession(const std::string& state) {
  writeFile("/run/session", state + "\n");
}

void OwnComputerTest::setRule(const std::string& action, const std::string& result) {
  writeFile(kRules, "polkit.addRule(function(action, subject) {\n  if (action.id == \"" + action +
                        "\") return polkit.Result." + result + ";\n});\n");
  startPolkit();
}

Words OwnComputerTest::callerWords(const Words& words) {
  Words all{builtProgram("helper_caller")};
  all.insert(all.end(), words.begin(), words.end());
  return all;
}

std::string OwnComputerTest::call(Words words, uid_t user) {
  const ProgramResult result = runProgram(callerWords(words), {.user = user});
  EXPECT_EQ(result.status, 0) << result.errors;
  return result.output;
}

}  // namespace norvik::helper
