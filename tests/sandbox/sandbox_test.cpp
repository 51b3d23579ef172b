// The sandbox end to end: the real programs in a fresh root with a fast clock. Every test has its own root
// and ports and leaves nothing behind.
#include <gtest/gtest.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <filesystem>

#include "src/adapters/property_lists/codec.h"
#include "tests/support/files.h"
#include "tests/support/sandbox.h"
#include "tests/support/tcp_port.h"

namespace norvik {
namespace {

namespace fs = std::filesystem;
using Result = ProgramResult;

PropertyList listIn(const fs::path& path) {
  return decodePropertyList(contentOf(path)).value_or(PropertyList("no property list"));
}

std::array<int, 3> freePorts() {
  const TcpListener a, b, c;
  return {a.port(), b.port(), c.port()};
}

class SandboxTest : public testing::Test {
 protected:
  static Result run(const Words& words, const std::map<std::string, std::string>& environment = {}) {
    return runProgram(words, {.environment = environment}, ErrorOutput::withOutput);
  }
  static void write(const fs::path& path, const std::string& content) { writeFile(path, content); }

  Result sandbox(const Words& words) { return box.control(words[0], Words(words.begin() + 1, words.end())); }

  void start(const std::string& speed) {
    const Result result = sandbox({"start", "--speed", speed});
    ASSERT_EQ(result.status, 0) << result.output;
  }

  Result tool(const std::string& path, const Words& arguments = {}) { return box.tool(path, arguments); }
  Result service(const Words& arguments) { return tool("/usr/sbin/nvkservice", arguments); }
  std::string log(const std::string& name) { return box.log(name); }
  bool logSays(const std::string& name, const std::string& text) { return box.logSays(name, text); }
  void configure(int nvk, int rdp) { box.setPorts(nvk, rdp); }

  std::vector<ProcessEntry> processes(const std::string& name = "") { return processesBelow(root_, name); }

  pid_t process(const std::string& name) {
    const auto found = processes("/" + name);
    EXPECT_EQ(found.size(), 1u) << name;
    return found.empty() ? -1 : found[0].pid;
  }

  Sandbox box;
  const fs::path& root_ = box.root();
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
  EXPECT_TRUE(processes().empty());
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

// Its signal to read settings again may come from another pane's save before it has seen to that.
TEST_F(SandboxTest, ASignalDoesNotEndAnAgentThatIsStarting) {
  EXPECT_EQ(sandbox({"stop"}).status, 0);
  box.replaceProgram("/Applications/Norvik Agent.app/Contents/MacOS/nvkagent", "kill -USR2 $$");
  const Result result = sandbox({"start"});
  EXPECT_EQ(result.status, 0) << result.output;
}

TEST_F(SandboxTest, UnknownWordsAreUsageErrors) {
  for (const Words& words : {Words{"begin"}, Words{"start", "--speed", "0"},
                             Words{"start", "--speed", "fast"}, Words{"stop", "now"}})
    EXPECT_EQ(sandbox(words).status, 64) << words[0];
  for (const Words& words : {Words{}, Words{"restart"}, Words{"apply", "-w"}, Words{"dspcmd"},
                             Words{"start", "-x"}, Words{"stop", "-f"}, Words{"admcmd", "open"}}) {
    const Result result = service(words);
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
  RunningProgram first({program, "start", "-f", "-w"}), second({program, "start", "-f", "-w"});
  EXPECT_EQ(first.status(), 0);
  EXPECT_EQ(second.status(), 0);
  // The second one has said that it is ready before it ends.
  EXPECT_TRUE(eventually([&] { return processes("/nvkserverd").size() == 1; }));
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
    const TcpListener taken;
    configure(taken.port(), ports[1]);
    ASSERT_EQ(service({"start", "-f", "-w"}).status, 0);
    EXPECT_EQ(greetingOn(ports[1]), "RDP ready\r\n");
    EXPECT_TRUE(logSays("serverd", "NVK cannot listen on port " + std::to_string(taken.port())));
    ports[0] = taken.port();
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
  for (int round = 0; round < 10; ++round) {
    const int port = ports[static_cast<std::size_t>(1 + round % 2)];
    write(root_ / "tmp/next", serverConfiguration(port, 0));
    fs::permissions(root_ / "tmp/next", static_cast<fs::perms>(0600));
    std::vector<RunningProgram> tools;
    tools.emplace_back(Words{root_ / "bin/mv", "-f", "/tmp/next", "/etc/norvik/svr.cfg"});
    tools.emplace_back(Words{root_ / "bin/chmod", "644", "/etc/norvik/svr.cfg"});
    tools.emplace_back(Words{root_ / "usr/sbin/chown", "root", "/etc/norvik/svr.cfg"});
    tools.emplace_back(Words{root_ / "usr/sbin/nvkservice", "apply"});
    for (RunningProgram& tool : tools) EXPECT_EQ(tool.status(), 0);
    EXPECT_EQ(fs::status(root_ / "etc/norvik/svr.cfg").permissions(), static_cast<fs::perms>(0644));
    ASSERT_TRUE(eventually([&] { return greetingOn(port) == "NVK ready\r\n"; })) << round;
  }
}

TEST_F(SandboxTest, NoPathLeadsOutOfTheRoot) {
  const fs::path outside = root_.string() + ".outside";
  write(outside, "untouched");
  fs::create_symlink(outside, root_ / "tmp/link");
  fs::create_directory_symlink(outside.parent_path(), root_ / "tmp/folder");
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
}

TEST_F(SandboxTest, WithoutARootNothingRuns) {
  for (const char* name : {"mv", "chmod", "chown", "defaults", "sysctl", "reboot", "nvkserverd", "nvkservice",
                           "nvkagent", "nvkmenua"})
    EXPECT_EQ(run({std::string(NORVIK_BIN_DIR "/sandbox/") + name}).status, 78) << name;
  EXPECT_EQ(run({NORVIK_BIN_DIR "/sandbox/sysctl", "-n", "kern.maxfiles"}, {{"NORVIK_ROOT", root_.string()}})
                .output,
            "12288\n");
  EXPECT_EQ(run({root_ / "usr/sbin/sysctl", "-n", "kern.maxfiles"}, {{"NORVIK_ROOT", "/nowhere"}}).status,
            78);
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
