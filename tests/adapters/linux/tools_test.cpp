// What the Linux adapter's tools are beyond the contract: real children that neither need nor disturb the
// program.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <filesystem>
#include <thread>

#include "tests/adapters/contract/computer_under_test.h"
#include "tests/adapters/linux/administered_computer.h"
#include "tests/support/sandbox_folder.h"

namespace norvik {
namespace {

namespace fs = std::filesystem;

class LinuxTools : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(service.AuthorizationCreate({}, 0, authorization), errAuthorizationSuccess);
    const std::array<AuthorizationItem, 1> rights{{{"system.privilege.admin", "", 0}}};
    ASSERT_EQ(service.AuthorizationCopyRights(authorization, rights, kAuthorizationFlagInteractionAllowed),
              errAuthorizationSuccess);
  }
  void TearDown() override {
    EXPECT_TRUE(computer.waitForTools(std::chrono::seconds(20)));
    service.AuthorizationFree(authorization, kAuthorizationFlagDestroyRights);
  }

  OSStatus start(const char* path, FileRef* pipe = nullptr) {
    const std::array<const char*, 1> none{nullptr};
    return service.AuthorizationExecuteWithPrivileges(authorization, path, 0, none.data(), pipe);
  }
  // A tool that does this, started; what it prints.
  std::string outputOf(const std::string& commands) {
    folder.putScript("/bin/tool", commands);
    FileRef pipe = nullptr;
    EXPECT_EQ(start("/bin/tool", &pipe), errAuthorizationSuccess);
    if (pipe == nullptr) return "no pipe";
    std::string output = readRest(computer.files, pipe);
    computer.files.fclose(pipe);
    return output;
  }
  static std::size_t openDescriptors() {
    const fs::directory_iterator entries("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(fs::begin(entries), fs::end(entries)));
  }

  SandboxFolder folder;
  LinuxComputer computer{AdministeredComputer::options(folder.path())};
  AuthorizationService& service = computer.authorization;
  AuthorizationRef authorization = nullptr;
};

TEST_F(LinuxTools, WaitForASlowerOneThatWasStartedBefore) {
  folder.putScript("/bin/slow", "sleep 0.3; echo slow >> $NORVIK_ROOT/tmp/order");
  folder.putScript("/bin/fast", "echo fast >> $NORVIK_ROOT/tmp/order");
  for (const char* tool : {"/bin/slow", "/bin/fast", "/bin/slow", "/bin/fast"}) {
    EXPECT_EQ(start(tool), errAuthorizationSuccess);
  }
  ASSERT_TRUE(computer.waitForTools(std::chrono::seconds(10)));
  EXPECT_EQ(folder.read("/tmp/order"), "slow\nfast\nslow\nfast\n");
}

TEST_F(LinuxTools, PrintAfterASlowerOneHasEnded) {
  folder.putScript("/bin/slow", "sleep 0.3; echo done > $NORVIK_ROOT/tmp/state");
  EXPECT_EQ(start("/bin/slow"), errAuthorizationSuccess);
  EXPECT_EQ(outputOf("cat $NORVIK_ROOT/tmp/state"), "done\n");
}

TEST_F(LinuxTools, ReturnToTheStarterAtOnce) {
  folder.putScript("/bin/slow", "sleep 2");
  folder.putScript("/bin/fast", "");
  const auto before = std::chrono::steady_clock::now();
  EXPECT_EQ(start("/bin/slow"), errAuthorizationSuccess);
  EXPECT_EQ(start("/bin/fast"), errAuthorizationSuccess);
  EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(1800));
  EXPECT_FALSE(computer.waitForTools(std::chrono::milliseconds(10)));
}

// On a computer whose clock runs so fast that the slow tool takes many times ten of its seconds.
TEST_F(LinuxTools, NeverOvertakeOneThatHasNotEnded) {
  AdministeredComputer fast(folder.path(), 50);
  folder.put("/tmp/new", "x");
  folder.putScript("/bin/mv", "sleep 1; exec /bin/mv \"$NORVIK_ROOT$2\" \"$NORVIK_ROOT$3\"");
  folder.putScript("/bin/chmod", "exec /bin/chmod \"$1\" \"$NORVIK_ROOT$2\"");
  fast.start("/bin/mv", {"-f", "/tmp/new", "/etc/norvik/svr.cfg"});
  fast.start("/bin/chmod", {"600", "/etc/norvik/svr.cfg"});
  ASSERT_TRUE(fast.computer.waitForTools(kPatience));
  EXPECT_EQ(folder.read("/etc/norvik/svr.cfg"), "x");
  EXPECT_EQ(fs::status(folder.onDisk("/etc/norvik/svr.cfg")).permissions(), fs::perms(0600));
}

TEST_F(LinuxTools, FindAnEnvironmentOfTheirOwn) {
  ::setenv("NORVIK_TEST_SECRET", "secret", 1);
  const std::string output = outputOf("env | grep -v -e ^PWD= -e ^_= -e ^SHLVL= -e ^OLDPWD= | sort");
  ::unsetenv("NORVIK_TEST_SECRET");
  EXPECT_EQ(output, "NORVIK_ROOT=" + folder.path() + "\nPATH=/usr/bin:/bin:/usr/sbin:/sbin\n");
}

TEST_F(LinuxTools, HaveNoInputAndRunInTheRoot) {
  EXPECT_EQ(outputOf("readlink /proc/$$/fd/0; pwd; umask"), "/dev/null\n/\n0022\n");
}

TEST_F(LinuxTools, HoldNothingThatTheProgramHasOpen) {
  const Descriptor open(::open("/dev/zero", O_RDONLY));  // not closed on exec, as a toolkit may leave it
  EXPECT_EQ(outputOf("readlink /proc/$$/fd/* | grep -c zero"), "0\n");
}

TEST_F(LinuxTools, HoldNothingOfTheProgramWhileTheyWait) {
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe(ends.data()), 0);
  const Descriptor reading(ends[0]);
  Descriptor writing(ends[1]);
  folder.putScript("/bin/slow", "sleep 2");
  folder.putScript("/bin/fast", "");
  EXPECT_EQ(start("/bin/slow"), errAuthorizationSuccess);
  EXPECT_EQ(start("/bin/fast"), errAuthorizationSuccess);
  const auto before = std::chrono::steady_clock::now();
  writing.reset();
  char byte = 0;
  EXPECT_EQ(::read(reading.number(), &byte, 1), 0);  // blocks as long as anybody holds the other end
  EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(1800));
}

TEST_F(LinuxTools, HandleSignalsAsUsualWhateverTheProgramDoes) {
  const auto before = ::signal(SIGTERM, SIG_IGN);
  EXPECT_EQ(outputOf("kill -TERM $$; echo still here"), "");
  ::signal(SIGTERM, before);
}

TEST_F(LinuxTools, AreReadToTheEndDespiteSignalsToTheProgram) {
  struct sigaction interrupting {};
  struct sigaction before {};
  interrupting.sa_handler = [](int) {};  // without SA_RESTART it cuts a read short
  ASSERT_EQ(::sigaction(SIGUSR1, &interrupting, &before), 0);
  std::thread interrupter([reader = ::pthread_self()] {
    for (int i = 0; i < 10; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
      ::pthread_kill(reader, SIGUSR1);
    }
  });
  EXPECT_EQ(outputOf("sleep 0.4; echo text"), "text\n");
  interrupter.join();
  ::sigaction(SIGUSR1, &before, nullptr);
}

TEST_F(LinuxTools, LeaveNeitherZombiesNorDescriptors) {
  folder.putScript("/bin/tool", "exit 3");
  EXPECT_EQ(start("/bin/tool"), errAuthorizationSuccess);  // whose end the next one would wait for
  ASSERT_TRUE(computer.waitForTools(std::chrono::seconds(10)));
  const std::size_t before = openDescriptors();
  for (int i = 0; i < 10; ++i) {
    EXPECT_EQ(outputOf("echo text"), "text\n");
    EXPECT_EQ(start("/bin/tool"), errAuthorizationSuccess);
    EXPECT_EQ(start("/bin/missing"), errAuthorizationToolExecuteFailure);
  }
  ASSERT_TRUE(computer.waitForTools(std::chrono::seconds(10)));
  EXPECT_EQ(openDescriptors(), before);
  EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST_F(LinuxTools, LeaveTheProgramItsOwnChildren) {
  const pid_t own = folder.start({"/bin/sleep", "600"});
  EXPECT_EQ(outputOf("echo text"), "text\n");
  ASSERT_TRUE(computer.waitForTools(std::chrono::seconds(10)));
  EXPECT_TRUE(folder.stillRuns(own));
  ::kill(own, SIGTERM);
  EXPECT_EQ(folder.endedBy(own), SIGTERM);  // its end can still be waited for
}

TEST_F(LinuxTools, RunInAProgramThatIgnoresTheEndsOfItsChildren) {
  const auto before = ::signal(SIGCHLD, SIG_IGN);
  EXPECT_EQ(outputOf("echo one"), "one\n");
  EXPECT_EQ(outputOf("echo two"), "two\n");
  EXPECT_TRUE(computer.waitForTools(std::chrono::seconds(10)));
  ::signal(SIGCHLD, before);
}

TEST_F(LinuxTools, OutliveTheProgram) {
  folder.putScript("/bin/slow", "sleep 0.3; echo one >> $NORVIK_ROOT/tmp/order");
  folder.putScript("/bin/fast", "echo two >> $NORVIK_ROOT/tmp/order");
  const pid_t program = ::fork();
  if (program == 0) {
    start("/bin/slow");
    start("/bin/fast");
    ::_exit(0);
  }
  ASSERT_EQ(::waitpid(program, nullptr, 0), program);
  EXPECT_TRUE(eventually([this] { return folder.read("/tmp/order") == "one\ntwo\n"; }));
}

TEST_F(LinuxTools, MustBeProgramsBelowTheRoot) {
  folder.put("/bin/text", "#!/bin/sh\n");
  EXPECT_EQ(start("/bin/text"), errAuthorizationToolExecuteFailure);
  EXPECT_EQ(start("/bin"), errAuthorizationToolExecuteFailure);
  EXPECT_EQ(start("/usr/bin/env"), errAuthorizationToolExecuteFailure);
}

TEST_F(LinuxTools, AreRefusedWithoutARight) {
  folder.putScript("/bin/tool", "echo text > $NORVIK_ROOT/tmp/started");
  AuthorizationRef without = nullptr;
  ASSERT_EQ(service.AuthorizationCreate({}, 0, without), errAuthorizationSuccess);
  const std::array<const char*, 1> none{nullptr};
  EXPECT_EQ(service.AuthorizationExecuteWithPrivileges(without, "/bin/tool", 0, none.data(), nullptr),
            errAuthorizationDenied);
  ASSERT_TRUE(computer.waitForTools(std::chrono::seconds(10)));
  EXPECT_EQ(folder.read("/tmp/started"), std::nullopt);
}

// A pane that is shown again silently requests its right again.
TEST_F(LinuxTools, AreAllowedAgainByASilentRequestWhileTheGrantLasts) {
  folder.putScript("/bin/tool", "");
  const std::array<AuthorizationItem, 1> rights{{{"system.privilege.admin", "", 0}}};
  EXPECT_EQ(service.AuthorizationCopyRights(authorization, rights, 0), errAuthorizationSuccess);
  EXPECT_EQ(start("/bin/tool"), errAuthorizationSuccess);
}

TEST_F(LinuxTools, AreRefusedToEverybodyAfterTheGrantWasGivenUp) {
  folder.putScript("/bin/tool", "");
  AuthorizationRef other = nullptr;
  const std::array<AuthorizationItem, 1> rights{{{"system.privilege.admin", "", 0}}};
  ASSERT_EQ(service.AuthorizationCreate({}, 0, other), errAuthorizationSuccess);
  ASSERT_EQ(service.AuthorizationCopyRights(other, rights, 0), errAuthorizationSuccess);
  ASSERT_EQ(service.AuthorizationFree(other, kAuthorizationFlagDestroyRights), errAuthorizationSuccess);
  EXPECT_EQ(start("/bin/tool"), errAuthorizationDenied);
  EXPECT_EQ(service.AuthorizationCopyRights(authorization, rights, 0), errAuthorizationDenied);
}

}  // namespace
}  // namespace norvik
