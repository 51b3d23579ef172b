// The sandbox end to end: the real programs in a fresh root with a fast clock. Every test has its own root
// and ports and leaves nothing behind.
#include <arpa/inet.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <thread>

#include "src/adapters/property_lists/codec.h"

namespace norvik {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;
using Environment = std::vector<std::string>;

// Empty for a file that cannot be read, such as one of a process that has just ended.
std::string contentOf(const fs::path& path) {
  std::string content;
  std::FILE* file = std::fopen(path.c_str(), "rbe");
  if (!file) return content;
  std::array<char, 4096> block{};
  for (std::size_t got; (got = std::fread(block.data(), 1, block.size(), file)) > 0;)
    content.append(block.data(), got);
  std::fclose(file);
  return content;
}

void write(const fs::path& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

PropertyList listIn(const fs::path& path) {
  return decodePropertyList(contentOf(path)).value_or(PropertyList("no property list"));
}

// Starts a program with both outputs going to a descriptor.
pid_t spawn(Words words, int output, Environment extra = {}) {
  std::vector<char*> arguments, environment;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  for (char** variable = environ; *variable; ++variable) environment.push_back(*variable);
  for (std::string& variable : extra) environment.push_back(variable.data());
  environment.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, output, STDERR_FILENO);
  pid_t child = -1;
  EXPECT_EQ(posix_spawn(&child, words[0].c_str(), &actions, nullptr, arguments.data(), environment.data()), 0)
      << words[0];
  posix_spawn_file_actions_destroy(&actions);
  return child;
}

int statusOf(pid_t child) {
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

struct Result {
  int status;
  std::string output;
};

// Runs a program to its end. The output ends when no process has it open, so a service that kept it open
// would hang the test.
Result run(const Words& words, const Environment& extra = {}) {
  std::array<int, 2> ends{};
  EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
  pid_t child = spawn(words, ends[1], extra);
  close(ends[1]);
  Result result{0, {}};
  std::array<char, 4096> block{};
  for (ssize_t got; (got = read(ends[0], block.data(), block.size())) > 0;)
    result.output.append(block.data(), static_cast<std::size_t>(got));
  close(ends[0]);
  result.status = statusOf(child);
  return result;
}

bool eventually(const std::function<bool()>& condition) {
  for (int i = 0; i < 500; ++i) {
    if (condition()) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return false;
}

sockaddr_in loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

// A socket that listens on a port of the system's choice.
struct Occupied {
  const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  int port = 0;

  Occupied() {
    sockaddr_in address = loopback(0);
    socklen_t size = sizeof address;
    EXPECT_EQ(bind(socket, reinterpret_cast<sockaddr*>(&address), size), 0);
    EXPECT_EQ(listen(socket, 1), 0);
    EXPECT_EQ(getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size), 0);
    port = ntohs(address.sin_port);
  }
  ~Occupied() { close(socket); }
  Occupied(const Occupied&) = delete;
  Occupied& operator=(const Occupied&) = delete;
};

std::array<int, 3> freePorts() {
  Occupied a, b, c;
  return {a.port, b.port, c.port};
}

// What a client that connects receives; empty when nobody listens.
std::string greetingOn(int port) {
  const int client = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address = loopback(port);
  std::string greeting;
  std::array<char, 64> block{};
  if (connect(client, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0)
    for (ssize_t got; (got = read(client, block.data(), block.size())) > 0;)
      greeting.append(block.data(), static_cast<std::size_t>(got));
  close(client);
  return greeting;
}

class SandboxTest : public testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = "/tmp/norvik-sandbox-XXXXXX";
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    root_ = pattern;
    start("50");
  }

  void TearDown() override {
    sandbox({"stop"});
    EXPECT_EQ(processes(), Words());
    fs::remove_all(root_);
  }

  Result sandbox(const Words& words) {
    Words all{NORVIK_BIN_DIR "/norvik-sandbox", words[0], root_};
    all.insert(all.end(), words.begin() + 1, words.end());
    return run(all);
  }

  void start(const std::string& speed) {
    Result result = sandbox({"start", "--speed", speed});
    ASSERT_EQ(result.status, 0) << result.output;
  }

  // A tool of the root, by its path there.
  Result tool(const std::string& path, const Words& arguments = {}) {
    Words words{root_.string() + path};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return run(words);
  }

  Result service(const Words& arguments) { return tool("/usr/sbin/nvkservice", arguments); }

  std::string log(const std::string& name) { return contentOf(root_ / ".norvik/log" / (name + ".log")); }

  bool logSays(const std::string& name, const std::string& text) {
    return eventually([&] { return log(name).find(text) != std::string::npos; });
  }

  // The programs of the root that run, and what else names it in its command line.
  Words processes(const std::string& name = "") {
    Words found;
    for (const auto& entry : fs::directory_iterator("/proc")) {
      std::error_code error;
      const std::string program = fs::read_symlink(entry.path() / "exe", error);
      const bool named = contentOf(entry.path() / "cmdline").find(root_.string() + "/") != std::string::npos;
      const bool below = program.starts_with(root_.string() + "/");
      if (error || !(named || below) || !program.ends_with(name)) continue;
      found.push_back(entry.path().filename());
    }
    return found;
  }

  pid_t process(const std::string& name) {
    Words found = processes("/" + name);
    EXPECT_EQ(found.size(), 1u) << name;
    return found.empty() ? -1 : std::stoi(found[0]);
  }

  // A server configuration with a port for each service; 0 switches it off.
  std::string configuration(int nvk, int rdp) {
    const auto service = [](int port) {
      return PropertyList(PropertyList::Dictionary{{"PortNumber", int64_t{port}}, {"Disabled", port == 0}});
    };
    return encodeXmlPropertyList(
        PropertyList(PropertyList::Dictionary{{"NVKService", service(nvk)}, {"RDPService", service(rdp)}}));
  }

  void configure(int nvk, int rdp) { write(root_ / "etc/norvik/svr.cfg", configuration(nvk, rdp)); }

  fs::path root_;
};

TEST_F(SandboxTest, StartLaysOutTheRootAndRunsTheAgents) {
  EXPECT_EQ(contentOf(root_ / "Applications/Norvik Agent.app/Contents/PkgInfo"), "APPLnvka");
  EXPECT_EQ(*listIn(root_ / "Applications/Norvik Agent.app/Contents/Info.plist").find("CFBundleIdentifier"),
            PropertyList("com.veltrane.nvkagent"));
  EXPECT_EQ(contentOf(root_ / ".norvik/authorization"), "granted\n");
  EXPECT_EQ(contentOf(root_ / ".norvik/clock"), "50\n");
  EXPECT_EQ(intValue(listIn(root_ / "etc/norvik/svr.cfg").find("NVKService")->find("PortNumber")), 4073);
  EXPECT_TRUE(log("agent").find("started: ImageUseDefaults=true") != std::string::npos);
  EXPECT_TRUE(log("menua").find("started: NvkNotificationShowNews=true") != std::string::npos);
  const std::string status = sandbox({"status"}).output;
  EXPECT_NE(status.find("bus runs"), std::string::npos);
  EXPECT_NE(status.find("nvkagent runs, process " + std::to_string(process("nvkagent"))), std::string::npos);
  EXPECT_NE(status.find("nvkserverd does not run"), std::string::npos);
}

TEST_F(SandboxTest, StartAgainStartsOnlyWhatIsMissingAndKeepsFiles) {
  const pid_t agent = process("nvkagent");
  const pid_t menuAgent = process("nvkmenua");
  write(root_ / "etc/launchd.conf", "kept\n");
  kill(menuAgent, SIGTERM);
  ASSERT_TRUE(eventually([&] { return processes("/nvkmenua").empty(); }));
  EXPECT_EQ(sandbox({"start"}).status, 0);
  EXPECT_EQ(process("nvkagent"), agent);
  EXPECT_NE(process("nvkmenua"), menuAgent);
  EXPECT_EQ(contentOf(root_ / "etc/launchd.conf"), "kept\n");
  EXPECT_EQ(contentOf(root_ / ".norvik/clock"), "50\n");
}

TEST_F(SandboxTest, StopEndsEverythingAndStartBringsItBack) {
  configure(freePorts()[0], 0);
  ASSERT_EQ(service({"start", "-f", "-w"}).status, 0);
  EXPECT_EQ(sandbox({"stop"}).status, 0);
  EXPECT_EQ(processes(), Words());
  EXPECT_FALSE(fs::exists(root_ / "var/run/nvkserverd.pid"));
  EXPECT_EQ(sandbox({"start"}).status, 0);
  EXPECT_GT(process("nvkagent"), 0);
}

TEST_F(SandboxTest, AFolderWithOtherContentIsRefused) {
  const fs::path other = root_ / "tmp/other";
  fs::create_directory(other);
  write(other / "file", "");
  EXPECT_EQ(run({NORVIK_BIN_DIR "/norvik-sandbox", "start", other}).status, 1);
  EXPECT_EQ(run({NORVIK_BIN_DIR "/norvik-sandbox", "stop", other}).status, 1);
  EXPECT_FALSE(fs::exists(other / ".norvik"));
}

TEST_F(SandboxTest, UnknownWordsAreUsageErrors) {
  for (const Words& words : {Words{"begin"}, Words{"start", "--speed", "0"},
                             Words{"start", "--speed", "fast"}, Words{"stop", "now"}})
    EXPECT_EQ(sandbox(words).status, 64) << words[0];
  for (const Words& words : {Words{}, Words{"restart"}, Words{"apply", "-w"}, Words{"dspcmd"},
                             Words{"start", "-x"}, Words{"stop", "-f"}, Words{"admcmd", "open"}}) {
    Result result = service(words);
    EXPECT_EQ(result.status, 64);
    EXPECT_EQ(result.output.find("usage: nvkservice"), 0u);
  }
}

TEST_F(SandboxTest, TheDaemonListensWhileItsPidFileIsThere) {
  const auto ports = freePorts();
  configure(ports[0], ports[1]);
  EXPECT_EQ(greetingOn(ports[0]), "");
  ASSERT_EQ(service({"start", "-f", "-w"}).status, 0);
  EXPECT_EQ(contentOf(root_ / "var/run/nvkserverd.pid"), std::to_string(process("nvkserverd")) + "\n");
  EXPECT_EQ(greetingOn(ports[0]), "NVK ready\r\n");
  EXPECT_EQ(greetingOn(ports[1]), "RDP ready\r\n");
  ASSERT_EQ(service({"stop", "-w"}).status, 0);
  EXPECT_FALSE(fs::exists(root_ / "var/run/nvkserverd.pid"));
  EXPECT_EQ(greetingOn(ports[0]), "");
  EXPECT_TRUE(eventually([&] { return processes("/nvkserverd").empty(); }));
}

TEST_F(SandboxTest, StartingAndStoppingTwiceIsHarmless) {
  configure(freePorts()[0], 0);
  EXPECT_EQ(service({"stop", "-w"}).status, 0);
  EXPECT_EQ(service({"apply"}).status, 0);
  ASSERT_EQ(service({"start", "-f", "-w"}).status, 0);
  const pid_t daemon = process("nvkserverd");
  EXPECT_EQ(service({"start", "-f", "-w"}).status, 0);
  EXPECT_EQ(process("nvkserverd"), daemon);
  EXPECT_EQ(service({"stop"}).status, 0);
  EXPECT_TRUE(eventually([&] { return processes("/nvkserverd").empty(); }));
}

TEST_F(SandboxTest, TwoStartsAtOnceMakeOneDaemon) {
  configure(freePorts()[0], 0);
  const std::string program = root_ / "usr/sbin/nvkservice";
  const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
  const pid_t first = spawn({program, "start", "-f", "-w"}, nowhere),
              second = spawn({program, "start", "-f", "-w"}, nowhere);
  close(nowhere);
  EXPECT_EQ(statusOf(first), 0);
  EXPECT_EQ(statusOf(second), 0);
  EXPECT_GT(process("nvkserverd"), 0);
}

TEST_F(SandboxTest, AKilledDaemonsPidFileDoesNotCount) {
  const auto ports = freePorts();
  configure(ports[0], 0);
  ASSERT_EQ(service({"start", "-w"}).status, 0);
  kill(process("nvkserverd"), SIGKILL);
  ASSERT_TRUE(eventually([&] { return processes("/nvkserverd").empty(); }));
  EXPECT_TRUE(fs::exists(root_ / "var/run/nvkserverd.pid"));
  EXPECT_EQ(service({"start", "-w"}).status, 0);
  EXPECT_EQ(greetingOn(ports[0]), "NVK ready\r\n");
}

TEST_F(SandboxTest, APidFileOfAnotherProcessIsNotSignalled) {
  write(root_ / "var/run/nvkserverd.pid", std::to_string(getpid()) + "\n");
  EXPECT_EQ(service({"stop", "-w"}).output, "nvkservice: stop: the daemon is not running\n");
}

TEST_F(SandboxTest, ApplyMovesOnlyWhatChanged) {
  const auto ports = freePorts();
  configure(ports[0], ports[1]);
  ASSERT_EQ(service({"start", "-f", "-w"}).status, 0);
  configure(ports[2], ports[1]);
  EXPECT_EQ(greetingOn(ports[2]), "");
  ASSERT_EQ(service({"apply"}).status, 0);
  EXPECT_TRUE(eventually([&] { return greetingOn(ports[2]) == "NVK ready\r\n"; }));
  EXPECT_EQ(greetingOn(ports[0]), "");
  EXPECT_EQ(greetingOn(ports[1]), "RDP ready\r\n");
  EXPECT_EQ(log("serverd").find("RDP no longer"), std::string::npos);
  configure(0, ports[2]);
  ASSERT_EQ(service({"apply"}).status, 0);
  EXPECT_TRUE(eventually([&] { return greetingOn(ports[2]) == "RDP ready\r\n"; }));
  EXPECT_TRUE(logSays("serverd", "NVK is switched off"));
}

TEST_F(SandboxTest, APortInUseStopsNoOtherService) {
  auto ports = freePorts();
  {
    Occupied taken;
    configure(taken.port, ports[1]);
    ASSERT_EQ(service({"start", "-f", "-w"}).status, 0);
    EXPECT_EQ(greetingOn(ports[1]), "RDP ready\r\n");
    EXPECT_TRUE(logSays("serverd", "NVK cannot listen on port " + std::to_string(taken.port)));
    ports[0] = taken.port;
  }
  ASSERT_EQ(service({"apply"}).status, 0);
  EXPECT_TRUE(eventually([&] { return greetingOn(ports[0]) == "NVK ready\r\n"; }));
}

TEST_F(SandboxTest, ANumberThatIsNoPortIsLogged) {
  configure(70000, 0);
  ASSERT_EQ(service({"start", "-f", "-w"}).status, 0);
  EXPECT_TRUE(logSays("serverd", "NVK: there is no port 70000"));
}

TEST_F(SandboxTest, WaitsTakeTheTimeOfTheClock) {
  configure(freePorts()[0], 0);
  const auto timeToStart = [&] {
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(service({"start", "-w"}).status, 0);
    return std::chrono::steady_clock::now() - before;
  };
  const auto fast = timeToStart();
  ASSERT_EQ(service({"stop", "-w"}).status, 0);
  start("1");
  const auto real = timeToStart();
  EXPECT_GE(real, std::chrono::seconds(1));
  EXPECT_LT(fast, real);
  start("50");
}

TEST_F(SandboxTest, TheAgentReadsItsSettingsAgainWhenSignalled) {
  const fs::path file = root_ / "Users/user/Library/Preferences/com.veltrane.nvkagent.plist";
  PropertyList list = listIn(file);
  *list.find("ImageColorDepth") = PropertyList(int64_t{8});
  write(file, encodeBinaryPropertyList(list));
  kill(process("nvkagent"), SIGUSR2);
  EXPECT_TRUE(logSays("agent", "SIGUSR2: ImageUseDefaults=true ImageQualityMode=2 ImageColorDepth=8"));
  EXPECT_GT(process("nvkagent"), 0);
}

void post(const std::string& address, const char* name) {
  sd_bus* bus = nullptr;
  ASSERT_GE(sd_bus_new(&bus), 0);
  ASSERT_GE(sd_bus_set_address(bus, address.c_str()), 0);
  ASSERT_GE(sd_bus_set_bus_client(bus, 1), 0);
  ASSERT_GE(sd_bus_start(bus), 0);
  EXPECT_GE(sd_bus_emit_signal(bus, "/com/veltrane/norvik/DistributedNotification",
                               "com.veltrane.norvik.DistributedNotification", "Posted", "ssu", name, "", 3u),
            0);
  sd_bus_flush_close_unref(bus);
}

TEST_F(SandboxTest, TheMenuAgentReadsItsSettingsAgainWhenNotified) {
  const fs::path file = root_ / "Users/user/Library/Preferences/com.veltrane.nvkmenua.plist";
  write(file,
        encodeXmlPropertyList(PropertyList(PropertyList::Dictionary{{"NvkNotificationShowNews", false}})));
  std::string address = contentOf(root_ / ".norvik/bus");
  address.pop_back();
  post(address, "SomeOtherNotification");
  post(address, "NvkMunuUpdateSettingsNotification");
  EXPECT_TRUE(logSays("menua", "NvkMunuUpdateSettingsNotification: NvkNotificationShowNews=false"));
  EXPECT_EQ(log("menua").find("SomeOther"), std::string::npos);
}

TEST_F(SandboxTest, DefaultsChangesItsKeyAndNoOther) {
  const std::string kPath = "/Library/Preferences/com.apple.windowserver";
  PropertyList list(
      PropertyList::Dictionary{{"GLCompositor", PropertyList::Dictionary{{"tileDepth", int64_t{1}}}},
                               {"When", PropertyList::Date{0.5}},
                               {"Huge", UINT64_MAX}});
  write(root_.string() + kPath + ".plist", encodeXmlPropertyList(list));
  Words words{"write", kPath, "GLCompositor", "-dict", "tileHeight", "-int", "0", "tileWidth", "-int", "256"};
  EXPECT_EQ(tool("/usr/bin/defaults", words).status, 0);
  EXPECT_EQ(tool("/usr/bin/defaults", {"write", kPath, "loginWindowIdleTime", "-int", "1200"}).status, 0);
  EXPECT_EQ(
      listIn(root_.string() + kPath + ".plist"),
      PropertyList(PropertyList::Dictionary{
          {"GLCompositor", PropertyList::Dictionary{{"tileHeight", int64_t{0}}, {"tileWidth", int64_t{256}}}},
          {"When", PropertyList::Date{0}},
          {"Huge", UINT64_MAX},
          {"loginWindowIdleTime", int64_t{1200}}}));
  EXPECT_EQ(tool("/usr/bin/defaults", {"write", "/Library/Preferences/new", "a", "-int", "-1"}).status, 0);
  EXPECT_EQ(intValue(listIn(root_ / "Library/Preferences/new.plist").find("a")), -1);
}

TEST_F(SandboxTest, DefaultsRefusesWhatItCannotKeep) {
  write(root_ / "Library/Preferences/broken.plist", "<plist>");
  EXPECT_EQ(tool("/usr/bin/defaults", {"write", "/Library/Preferences/broken", "a", "-int", "1"}).status, 1);
  EXPECT_EQ(contentOf(root_ / "Library/Preferences/broken.plist"), "<plist>");
  const fs::path sparse = root_ / "Library/Preferences/sparse.plist";
  write(sparse, "");
  fs::resize_file(sparse, std::uintmax_t{15} << 40);
  EXPECT_EQ(tool("/usr/bin/defaults", {"write", "/Library/Preferences/sparse", "a", "-int", "1"}).output,
            "defaults: /Library/Preferences/sparse: not a readable dictionary\n");
  EXPECT_EQ(fs::file_size(sparse), std::uintmax_t{15} << 40);
  EXPECT_EQ(tool("/usr/bin/defaults", {"write", "/Library/Preferences/new", "a", "-int", "x"}).status, 1);
  EXPECT_EQ(tool("/usr/bin/defaults", {"write", "/Library/Preferences/new", "a", "-real", "1"}).status, 64);
  EXPECT_FALSE(fs::exists(root_ / "Library/Preferences/new.plist"));
}

TEST_F(SandboxTest, SysctlShowsTheKernelsValues) {
  EXPECT_EQ(tool("/usr/sbin/sysctl", {"-n", "kern.maxfiles"}).output, "12288\n");
  EXPECT_EQ(tool("/usr/sbin/sysctl", {"-n", "kern.maxfilesperproc"}).output, "10240\n");
  EXPECT_EQ(tool("/usr/sbin/sysctl", {"-n", "kern.maxproc"}).status, 1);
}

TEST_F(SandboxTest, FilesAreMovedAndTheirModeAndOwnerSet) {
  write(root_ / "tmp/new", "new\n");
  EXPECT_EQ(tool("/bin/mv", {"-f", "/tmp/new", "/etc/launchd.conf"}).status, 0);
  EXPECT_EQ(tool("/bin/chmod", {"640", "/etc/launchd.conf"}).status, 0);
  EXPECT_EQ(tool("/usr/sbin/chown", {"root", "/etc/launchd.conf"}).status, 0);
  EXPECT_EQ(tool("/usr/sbin/chown", {"user", "/etc/norvik/svr.cfg"}).status, 0);
  EXPECT_EQ(tool("/usr/sbin/chown", {"wheel", "/etc/launchd.conf"}).status, 0);
  EXPECT_EQ(contentOf(root_ / "etc/launchd.conf"), "new\n");
  EXPECT_FALSE(fs::exists(root_ / "tmp/new"));
  EXPECT_EQ(fs::status(root_ / "etc/launchd.conf").permissions(), static_cast<fs::perms>(0640));
  EXPECT_EQ(contentOf(root_ / ".norvik/owners"), "wheel /etc/launchd.conf\nuser /etc/norvik/svr.cfg\n");
  EXPECT_EQ(tool("/bin/mv", {"-f", "/tmp/new", "/etc/launchd.conf"}).status, 1);
  EXPECT_EQ(tool("/bin/chmod", {"8", "/etc/launchd.conf"}).status, 64);
}

TEST_F(SandboxTest, ToolsLaunchedWithoutWaitingTakeEffectInOrder) {
  const auto ports = freePorts();
  configure(ports[0], 0);
  ASSERT_EQ(service({"start", "-f", "-w"}).status, 0);
  const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
  for (int round = 0; round < 10; ++round) {
    const int port = ports[static_cast<std::size_t>(1 + round % 2)];
    write(root_ / "tmp/next", configuration(port, 0));
    fs::permissions(root_ / "tmp/next", static_cast<fs::perms>(0600));
    std::vector<pid_t> tools{
        spawn({root_ / "bin/mv", "-f", "/tmp/next", "/etc/norvik/svr.cfg"}, nowhere),
        spawn({root_ / "bin/chmod", "644", "/etc/norvik/svr.cfg"}, nowhere),
        spawn({root_ / "usr/sbin/chown", "root", "/etc/norvik/svr.cfg"}, nowhere),
        spawn({root_ / "usr/sbin/nvkservice", "apply"}, nowhere),
    };
    for (const pid_t tool : tools) EXPECT_EQ(statusOf(tool), 0);
    EXPECT_EQ(fs::status(root_ / "etc/norvik/svr.cfg").permissions(), static_cast<fs::perms>(0644));
    ASSERT_TRUE(eventually([&] { return greetingOn(port) == "NVK ready\r\n"; })) << round;
  }
  close(nowhere);
}

TEST_F(SandboxTest, NoPathLeadsOutOfTheRoot) {
  const fs::path outside = root_.string() + ".outside";
  write(outside, "untouched");
  fs::create_symlink(outside, root_ / "tmp/link");
  fs::create_directory_symlink("/tmp", root_ / "tmp/folder");
  const std::string through = "/tmp/folder/" + outside.filename().string();
  write(root_ / "tmp/file", "");
  for (const std::string& path : {"/.." + outside.string(), "/tmp/../../" + outside.filename().string(),
                                  std::string("/tmp/link"), through, std::string("tmp/file")}) {
    EXPECT_EQ(tool("/bin/chmod", {"600", path}).status, 1) << path;
    EXPECT_EQ(tool("/bin/mv", {"-f", "/tmp/file", path}).status, 1) << path;
    EXPECT_EQ(tool("/bin/mv", {"-f", path, "/tmp/file"}).status, 1) << path;
    EXPECT_EQ(tool("/usr/sbin/chown", {"root", path}).status, 1) << path;
    EXPECT_EQ(tool("/usr/bin/defaults", {"write", path, "a", "-int", "1"}).status,
              path == "/tmp/link" ? 0 : 1)
        << path;
  }
  EXPECT_EQ(contentOf(outside), "untouched");
  fs::remove(outside);
}

TEST_F(SandboxTest, WithoutARootNothingRuns) {
  for (const char* name : {"mv", "chmod", "chown", "defaults", "sysctl", "reboot", "nvkserverd", "nvkservice",
                           "nvkagent", "nvkmenua"})
    EXPECT_EQ(run({std::string(NORVIK_BIN_DIR "/sandbox/") + name}).status, 78) << name;
  EXPECT_EQ(run({NORVIK_BIN_DIR "/sandbox/sysctl", "-n", "kern.maxfiles"}, {"NORVIK_ROOT=" + root_.string()})
                .output,
            "12288\n");
  EXPECT_EQ(run({root_ / "usr/sbin/sysctl", "-n", "kern.maxfiles"}, {"NORVIK_ROOT=/nowhere"}).status, 78);
}

TEST_F(SandboxTest, RebootAndTheManagementToolsOnlySaySo) {
  EXPECT_EQ(tool("/sbin/reboot").status, 0);
  EXPECT_TRUE(logSays("reboot", "the computer would restart now"));
  EXPECT_EQ(service({"dspcmd", "manage"}).output,
            "nvkservice: dspcmd manage: the display manager would open\n");
  EXPECT_EQ(service({"admcmd", "manage"}).output,
            "nvkservice: admcmd manage: the access manager would open\n");
  EXPECT_TRUE(logSays("service", "admcmd manage: the access manager would open"));
}

}  // namespace
}  // namespace norvik
