// The contract of the listening ports, over real processes with real sockets, as Linux and as the Mac see
// them, and over the simulated computer; and what only the system's own tables show.
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <type_traits>

#include "src/adapters/apple/listening_ports.h"
#include "src/adapters/linux/listening_ports.h"
#include "src/adapters/posix/descriptors.h"
#include "src/adapters/simulated/simulated_computer.h"
#include "tests/support/files.h"
#include "tests/support/program.h"
#include "tests/support/tcp_port.h"
#include "tests/support/temporary_folder.h"

namespace norvik {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void waitToBeKilled() {
  while (true) ::pause();
}

// A process of the test's own that calls this and does not come back from it; ended with the object.
class ForkedProcess {
 public:
  template <typename Body>
  explicit ForkedProcess(Body body) : pid_(::fork()) {
    if (pid_ != 0) return;
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    body();
    waitToBeKilled();
  }
  ~ForkedProcess() {
    ::kill(pid_, SIGKILL);
    ::waitpid(pid_, nullptr, 0);
  }
  ForkedProcess(const ForkedProcess&) = delete;
  ForkedProcess& operator=(const ForkedProcess&) = delete;

  int32_t pid() const { return pid_; }

 private:
  pid_t pid_;
};

// A socket that listens on a free port of IPv6 alone, or on one of IPv4, for as long as the process lives.
uint16_t listenForGood(int family) {
  sockaddr_in6 address{};
  address.sin6_family = static_cast<sa_family_t>(family);
  if (family == AF_INET6) address.sin6_addr = in6addr_loopback;
  socklen_t size = family == AF_INET6 ? sizeof(sockaddr_in6) : sizeof(sockaddr_in);
  const int socket = ::socket(family, SOCK_STREAM, 0);
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  if (::bind(socket, generic, size) != 0 || ::listen(socket, 1) != 0) return 0;
  ::getsockname(socket, generic, &size);
  return ntohs(address.sin6_port);  // at the same place for IPv4
}

// Processes that listen, on the simulated computer or on this one.
class PortsUnderTest {
 public:
  virtual ~PortsUnderTest() = default;
  virtual ListeningPorts& ports() = 0;

  struct Process {
    int32_t pid = 0;
    uint16_t port = 0;
  };
  // A process that listens on one port; the same with no port, where it listens nowhere.
  virtual Process startListening() = 0;
  virtual Process startSilent() = 0;
  // Ends the process that was started last.
  virtual void endLast() = 0;
  // The name of the program of a process that was started.
  virtual std::string program() = 0;
  virtual uint16_t unusedPort() = 0;
  // Whether the system shows the sockets of its processes.
  virtual bool showsSockets() const { return true; }
};

// A process of its own that calls `port` and writes the port that it returns when it is ready.
class ListeningProcess {
 public:
  template <typename Port>
  explicit ListeningProcess(Port port) {
    int ends[2] = {-1, -1};
    EXPECT_EQ(::pipe(ends), 0);
    const Descriptor reading(ends[0]), writing(ends[1]);
    process_ = std::make_unique<ForkedProcess>([&] { writePort(writing, port()); });
    EXPECT_EQ(::read(reading.number(), &port_, sizeof port_), ssize_t{sizeof port_});
  }
  // What the process does when it listens.
  static void writePort(const Descriptor& pipe, uint16_t port) {
    if (::write(pipe.number(), &port, sizeof port) != sizeof port) ::_exit(1);
  }

  int32_t pid() const { return process_->pid(); }
  uint16_t port() const { return port_; }

 private:
  std::unique_ptr<ForkedProcess> process_;
  uint16_t port_ = 0;
};

// On this computer.
template <typename Adapter>
class RealPortsUnderTest : public PortsUnderTest {
 public:
  ListeningPorts& ports() override { return ports_; }
  bool showsSockets() const override { return std::is_same_v<Adapter, LinuxListeningPorts>; }
  Process startListening() override {
    return start([] { return listenForGood(AF_INET); });
  }
  Process startSilent() override {
    return start([] { return uint16_t{0}; });
  }
  void endLast() override { processes_.pop_back(); }
  std::string program() override { return fs::read_symlink("/proc/self/exe").filename(); }
  uint16_t unusedPort() override { return static_cast<uint16_t>(freePort()); }

 private:
  template <typename Port>
  Process start(Port port) {
    processes_.emplace_back(port);
    return {processes_.back().pid(), processes_.back().port()};
  }

  Adapter ports_;
  std::vector<ListeningProcess> processes_;
};

class SimulatedPortsUnderTest : public PortsUnderTest {
 public:
  ListeningPorts& ports() override { return computer_.ports; }
  Process startListening() override {
    last_ = startSilent();
    last_.port = static_cast<uint16_t>(last_.pid);
    computer_.ports.hold(last_.port, last_.pid, program());
    return last_;
  }
  Process startSilent() override {
    last_ = {last_.pid == 0 ? 3000 : last_.pid + 1, 0};
    computer_.processes.setState(last_.pid, ProcessTable::State::alive);
    return last_;
  }
  void endLast() override {
    computer_.processes.setState(last_.pid, ProcessTable::State::dead);
    computer_.ports.release(last_.port);
  }
  std::string program() override { return "listener"; }
  uint16_t unusedPort() override { return 2999; }

 private:
  SimulatedComputer computer_;
  Process last_;
};

struct PortsAdapter {
  const char* name;
  std::unique_ptr<PortsUnderTest> (*make)();
};
void PrintTo(const PortsAdapter& adapter, std::ostream* stream) {
  *stream << adapter.name;
}

std::string portsAdapterName(const testing::TestParamInfo<PortsAdapter>& info) {
  return info.param.name;
}

class ListeningPortsContract : public testing::TestWithParam<PortsAdapter> {
 protected:
  std::unique_ptr<PortsUnderTest> computer = GetParam().make();
  ListeningPorts& ports = computer->ports();
};

INSTANTIATE_TEST_SUITE_P(
    Every, ListeningPortsContract,
    testing::Values(PortsAdapter{"simulated",
                                 []() -> std::unique_ptr<PortsUnderTest> {
                                   return std::make_unique<SimulatedPortsUnderTest>();
                                 }},
                    PortsAdapter{"linux",
                                 []() -> std::unique_ptr<PortsUnderTest> {
                                   return std::make_unique<RealPortsUnderTest<LinuxListeningPorts>>();
                                 }},
                    PortsAdapter{"apple",
                                 []() -> std::unique_ptr<PortsUnderTest> {
                                   return std::make_unique<RealPortsUnderTest<AppleListeningPorts>>();
                                 }}),
    portsAdapterName);

TEST_P(ListeningPortsContract, AProcessHasThePortsThatItListensOn) {
  const auto first = computer->startListening();
  const auto second = computer->startListening();
  for (const auto& process : {first, second}) {
    const auto seen = ports.portsOf(process.pid);
    if (computer->showsSockets()) {
      EXPECT_EQ(seen, (std::set<uint16_t>{process.port}));
    } else {
      EXPECT_EQ(seen, std::nullopt) << "not shown is not none";
    }
  }
}

TEST_P(ListeningPortsContract, AProcessThatListensNowhereHasNone) {
  const auto seen = ports.portsOf(computer->startSilent().pid);
  EXPECT_EQ(seen.has_value(), computer->showsSockets());
  EXPECT_EQ(seen.value_or(std::set<uint16_t>{}), (std::set<uint16_t>{}));
}

TEST_P(ListeningPortsContract, OfNoProcessNothingIsKnown) {
  const auto process = computer->startListening();
  computer->endLast();
  EXPECT_EQ(ports.portsOf(process.pid), std::nullopt);
  for (const int32_t pid : {0, -1}) EXPECT_EQ(ports.portsOf(pid), std::nullopt) << pid;
}

TEST_P(ListeningPortsContract, AHolderHasItsProcessAndItsProgram) {
  const auto process = computer->startListening();
  const auto holder = ports.holderOf(process.port);
  ASSERT_TRUE(holder) << "that there is one can always be seen";
  if (computer->showsSockets()) {
    EXPECT_EQ(holder->pid, process.pid);
    EXPECT_EQ(holder->program, computer->program());
  } else {
    EXPECT_EQ(holder->pid, std::nullopt);
    EXPECT_EQ(holder->program, "");
  }
}

TEST_P(ListeningPortsContract, NobodyHoldsAPortThatNobodyListensOn) {
  EXPECT_FALSE(ports.holderOf(computer->unusedPort()));
  const auto process = computer->startListening();
  computer->endLast();
  EXPECT_FALSE(ports.holderOf(process.port));
}

TEST_P(ListeningPortsContract, AConnectionIsAcceptedWhereSomebodyListens) {
  const auto process = computer->startListening();
  EXPECT_TRUE(ports.accepts(process.port));
  EXPECT_TRUE(ports.accepts(process.port));
  EXPECT_FALSE(ports.accepts(computer->unusedPort()));
}

// ---- The simulated server

TEST(SimulatedListeningPortsTest, TheServerListensOnTheStoredPortsThatNobodyElseHolds) {
  SimulatedComputer computer;
  computer.service.setDaemon(700);
  EXPECT_EQ(computer.ports.portsOf(700), (std::set<uint16_t>{4073, 3389}));
  EXPECT_EQ(computer.ports.holderOf(4073)->program, "nvkserverd");
  computer.fileSystem.put(
      "/etc/norvik/svr.cfg",
      "<plist version=\"1.0\"><dict><key>NVKService</key><dict><key>PortNumber</key>"
      "<integer>5000</integer></dict><key>RDPService</key><dict><key>Disabled</key><true/>"
      "</dict></dict></plist>");
  EXPECT_EQ(computer.ports.portsOf(700), (std::set<uint16_t>{5000}));
  computer.ports.hold(5000, 812, "nginx");
  EXPECT_EQ(computer.ports.portsOf(700), (std::set<uint16_t>{}));
  EXPECT_EQ(computer.ports.holderOf(5000)->pid, 812);
}

TEST(SimulatedListeningPortsTest, OtherPortsLastUntilTheServerReadsItsSettings) {
  SimulatedComputer computer;
  computer.service.setDaemon(700);
  computer.ports.setServerPorts({4500});
  EXPECT_EQ(computer.ports.portsOf(700), (std::set<uint16_t>{4500}));
  computer.tools.launch("/usr/sbin/nvkservice", {"apply"});
  EXPECT_EQ(computer.ports.portsOf(700), (std::set<uint16_t>{4073, 3389}));
}

TEST(SimulatedListeningPortsTest, WhatTheUserMayNotSeeCanStillBeConnectedTo) {
  SimulatedComputer computer;
  computer.service.setDaemon(700);
  computer.ports.setVisible(false);
  EXPECT_EQ(computer.ports.portsOf(700), std::nullopt);
  ASSERT_TRUE(computer.ports.holderOf(4073));
  EXPECT_EQ(computer.ports.holderOf(4073)->pid, std::nullopt);
  EXPECT_EQ(computer.ports.holderOf(4073)->program, "");
  EXPECT_TRUE(computer.ports.accepts(4073));
}

// ---- This computer

TEST(LinuxListeningPortsTest, ChildrenListenForTheirParent) {
  const ListeningProcess parent([] {
    static const ListeningProcess child([] {
      static const ListeningProcess grandchild([] { return listenForGood(AF_INET); });
      return grandchild.port();
    });
    return child.port();
  });
  EXPECT_EQ(LinuxListeningPorts().portsOf(parent.pid()), (std::set<uint16_t>{parent.port()}));
}

TEST(LinuxListeningPortsTest, ASocketOfIPv6CountsAsOneOfIPv4Does) {
  const ListeningProcess process([] { return listenForGood(AF_INET6); });
  ASSERT_NE(process.port(), 0) << "this computer has no IPv6";
  LinuxListeningPorts ports;
  EXPECT_EQ(ports.portsOf(process.pid()), (std::set<uint16_t>{process.port()}));
  EXPECT_EQ(ports.holderOf(process.port())->pid, process.pid());
  EXPECT_TRUE(ports.accepts(process.port()));
}

// A folder like /proc in which one process, 70, listens on port 4073, and its child, 71, on port 3389.
class ProcessFolderTest : public testing::Test {
 protected:
  ProcessFolderTest() {
    writeFile(folder.path() / "net/tcp",
              kHeadings + line("0100007F:0FE9", "0A", 501) + line("0100007F:1F90", "01", 502));
    writeFile(folder.path() / "net/tcp6",
              kHeadings + line("00000000000000000000000000000000:0D3D", "0A", 503));
    addProcess(70, "(nvk ) server) S 1", {501, 502});
    addProcess(71, "(worker) S 70", {503});
  }
  static std::string line(const std::string& local, const std::string& state, int inode) {
    return "   0: " + local + " 00000000:0000 " + state +
           " 00000000:00000000 00:00000000 00000000     0        0 " + std::to_string(inode) + " 1 0 100 0\n";
  }
  fs::path process(int pid) const { return folder.path() / std::to_string(pid); }
  void addProcess(int pid, const std::string& status, const std::vector<int>& inodes) {
    fs::create_directories(process(pid) / "fd");
    writeFile(process(pid) / "stat", std::to_string(pid) + " " + status + " 0 0\n");
    writeFile(process(pid) / "comm", "worker\n");
    for (const int inode : inodes) {
      fs::create_symlink("socket:[" + std::to_string(inode) + "]",
                         process(pid) / "fd" / std::to_string(inode));
    }
  }
  // As the files of another user's process, which the super-user may read all the same.
  void hideFilesOf(int pid) {
    fs::remove_all(process(pid) / "fd");
    writeFile(process(pid) / "fd", "no folder");
  }

  static inline const std::string kHeadings =
      "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid  timeout inode\n";
  TemporaryFolder folder;
  LinuxListeningPorts ports{folder.path()};
};

TEST_F(ProcessFolderTest, OnlySocketsThatListenCount) {
  EXPECT_EQ(ports.portsOf(70), (std::set<uint16_t>{4073, 3389}));
  EXPECT_EQ(ports.portsOf(71), (std::set<uint16_t>{3389}));
  EXPECT_FALSE(ports.holderOf(8080));
}

TEST_F(ProcessFolderTest, FilesThatMayNotBeSeenLeaveThePortsUnknown) {
  hideFilesOf(71);
  EXPECT_EQ(ports.portsOf(70), std::nullopt);
  EXPECT_EQ(ports.portsOf(71), std::nullopt);
  ASSERT_TRUE(ports.holderOf(3389));
  EXPECT_EQ(ports.holderOf(3389)->pid, std::nullopt);
  EXPECT_EQ(ports.holderOf(3389)->program, "");
  EXPECT_EQ(ports.holderOf(4073)->pid, 70);
}

TEST_F(ProcessFolderTest, AChildThatHasJustEndedDoesNotMatter) {
  fs::remove_all(process(71) / "fd");
  EXPECT_EQ(ports.portsOf(70), (std::set<uint16_t>{4073}));
}

TEST_F(ProcessFolderTest, WithoutTheTableOfIPv4NothingIsKnownAndWithoutTheOtherOnlyThat) {
  fs::remove(folder.path() / "net/tcp6");
  EXPECT_EQ(ports.portsOf(70), (std::set<uint16_t>{4073}));
  fs::remove(folder.path() / "net/tcp");
  EXPECT_EQ(ports.portsOf(70), std::nullopt);
  EXPECT_FALSE(ports.holderOf(4073));
}

TEST_F(ProcessFolderTest, AHolderIsNamedByItsProgramOrElseByItsProcess) {
  EXPECT_EQ(ports.holderOf(4073)->program, "worker");
  fs::create_symlink("/usr/sbin/nvkserverd (deleted)", process(70) / "exe");
  EXPECT_EQ(ports.holderOf(4073)->program, "nvkserverd");
}

TEST_F(ProcessFolderTest, LinesThatAreNoSocketsAreSkipped) {
  writeFile(folder.path() / "net/tcp",
            "0A\n\n 1: nonsense 0 0A a b c d e f\n" + line("0100007F:0FE9", "0A", 501));
  EXPECT_EQ(ports.portsOf(70), (std::set<uint16_t>{4073, 3389}));
}

}  // namespace
}  // namespace norvik
