// Privileged tools of the Mac's adapter, over a service that starts them at once and waits for none, and
// rights that end after five minutes.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>

#include "src/adapters/apple/process_table.h"
#include "tests/adapters/apple/apple_under_test.h"
#include "tests/support/waiting.h"

namespace norvik {
namespace {

using namespace std::chrono_literals;

class AppleTools : public testing::Test {
 protected:
  AppleTools() {
    EXPECT_EQ(service().AuthorizationCreate({}, 0, authorization), errAuthorizationSuccess);
    EXPECT_EQ(ask(kAuthorizationFlagInteractionAllowed), errAuthorizationSuccess);
  }

  AuthorizationService& service() { return mac.computer().authorization; }
  LaunchedTools& tools() { return mac.interfaces().services.tools; }
  OSStatus ask(AuthorizationFlags flags) {
    const std::array<AuthorizationItem, 1> rights{{{"system.privilege.admin", "/bin/mv", 0}}};
    return service().AuthorizationCopyRights(authorization, rights, flags);
  }
  OSStatus start(const char* path, std::vector<const char*> arguments = {}, FileRef* pipe = nullptr) {
    arguments.push_back(nullptr);
    return service().AuthorizationExecuteWithPrivileges(authorization, path, 0, arguments.data(), pipe);
  }
  // A tool that ends when `release` is called.
  void putHeldTool(const std::string& path) {
    mac.folder().putScript(path, "while [ ! -e $NORVIK_ROOT/tmp/go ]; do sleep 0.01; done");
  }
  void release() { mac.putFile("/tmp/go", ""); }
  std::vector<ToolOutcome> ended() {
    EXPECT_TRUE(tools().wait(10s));
    return tools().outcomes();
  }

  AppleUnderTest mac;
  AuthorizationRef authorization = nullptr;
};

// The double starts each at once, and the first of two takes effect last.
TEST_F(AppleTools, TakeEffectInOrderAlthoughTheServiceKeepsNone) {
  mac.folder().putScript("/bin/one", "echo one >> $NORVIK_ROOT/tmp/order");
  mac.folder().putScript("/bin/two", "echo two >> $NORVIK_ROOT/tmp/order");
  EXPECT_EQ(start("/bin/one"), errAuthorizationSuccess);
  EXPECT_EQ(start("/bin/two"), errAuthorizationSuccess);
  EXPECT_EQ(ended().size(), 2u);
  EXPECT_EQ(mac.bytesOf("/tmp/order"), "one\ntwo\n");
}

TEST_F(AppleTools, LeaveNoZombieAndTheHostsChildrenToTheHost) {
  mac.folder().putScript("/bin/tool", "");
  const pid_t own = ::fork();
  if (own == 0) ::_exit(3);
  EXPECT_EQ(start("/bin/tool"), errAuthorizationSuccess);
  EXPECT_EQ(start("/bin/tool"), errAuthorizationSuccess);
  EXPECT_EQ(ended().size(), 2u);
  EXPECT_TRUE(privilegedChildren().empty());
  int status = 0;
  EXPECT_EQ(::waitpid(own, &status, 0), own);
  EXPECT_EQ(WEXITSTATUS(status), 3);
}

TEST_F(AppleTools, HaveAnUnknownEndWhereTheSystemHidesItsProcesses) {
  mac.folder().putScript("/bin/tool", "");
  doubles::mac().hidesProcesses = true;
  EXPECT_EQ(start("/bin/tool"), errAuthorizationSuccess);
  const auto outcomes = ended();
  ASSERT_EQ(outcomes.size(), 1u);
  EXPECT_TRUE(outcomes[0].ended());
  EXPECT_FALSE(outcomes[0].succeeded());
  EXPECT_EQ(outcomes[0].words, "The system does not tell how it ended.");
  const pid_t left = *doubles::mac().launched.begin();
  EXPECT_EQ(::waitpid(left, nullptr, 0), left);
}

TEST_F(AppleTools, AreTakenForOneAnotherNever) {
  EXPECT_EQ(newChild({1, 2}, {1, 2, 5}), 5);
  EXPECT_EQ(newChild({1, 2}, {1, 2}), std::nullopt);
  EXPECT_EQ(newChild({1, 2}, {1, 5, 6}), std::nullopt) << "either could be somebody else's";
}

TEST_F(AppleTools, AskForThePasswordAgainAfterFiveMinutes) {
  mac.folder().putScript("/bin/tool", "");
  EXPECT_EQ(doubles::mac().passwordsAsked, 1);
  doubles::mac().seconds = 299;
  EXPECT_EQ(ask(0), errAuthorizationSuccess);
  doubles::mac().seconds = 300;
  EXPECT_EQ(ask(0), errAuthorizationInteractionNotAllowed);
  EXPECT_EQ(start("/bin/tool"), errAuthorizationSuccess);
  EXPECT_EQ(doubles::mac().passwordsAsked, 2);
  EXPECT_EQ(ended().size(), 1u);
  doubles::mac().seconds = 700;
  doubles::mac().isAdministrator = false;
  EXPECT_EQ(start("/bin/tool"), errAuthorizationCanceled);
  EXPECT_EQ(ended().size(), 1u);
}

TEST_F(AppleTools, TellWhyRightsWereNotGranted) {
  EXPECT_EQ(mac.computer().lastRefusal(), AuthorizationRefusal::none);
  doubles::mac().seconds = 300;
  ask(0);
  EXPECT_EQ(mac.computer().lastRefusal(), AuthorizationRefusal::noAgent);
  doubles::mac().isAdministrator = false;
  ask(kAuthorizationFlagInteractionAllowed);
  EXPECT_EQ(mac.computer().lastRefusal(), AuthorizationRefusal::refused);
}

TEST_F(AppleTools, AreStartedBeforeTheirRightsAreGivenUp) {
  mac.putSlowTool("/usr/bin/defaults", 200ms);
  mac.putFile("/tmp/file", "x");
  EXPECT_EQ(start("/usr/bin/defaults"), errAuthorizationSuccess);
  EXPECT_EQ(start("/bin/chmod", {"600", "/tmp/file"}), errAuthorizationSuccess);
  EXPECT_EQ(service().AuthorizationFree(authorization, kAuthorizationFlagDestroyRights),
            errAuthorizationSuccess);
  EXPECT_TRUE(ended().back().succeeded());
  EXPECT_EQ(mac.modeOf("/tmp/file"), 0600u);
}

// At its end a front end waits no longer than the limit; what then has not begun never does, and says so.
TEST_F(AppleTools, AreGivenUpWhereThoseBeforeThemTakeTooLong) {
  mac.makeComputer(30ms);
  ASSERT_EQ(service().AuthorizationCreate({}, 0, authorization), errAuthorizationSuccess);
  ASSERT_EQ(ask(kAuthorizationFlagInteractionAllowed), errAuthorizationSuccess);
  putHeldTool("/usr/bin/defaults");
  mac.putFile("/tmp/file", "x");
  EXPECT_EQ(start("/usr/bin/defaults"), errAuthorizationSuccess);
  EXPECT_EQ(start("/bin/mv", {"-f", "/tmp/file", "/tmp/moved"}), errAuthorizationSuccess);
  EXPECT_EQ(service().AuthorizationFree(authorization, kAuthorizationFlagDestroyRights),
            errAuthorizationSuccess);
  release();
  const auto outcomes = ended();
  ASSERT_EQ(outcomes.size(), 2u);
  EXPECT_TRUE(outcomes[0].succeeded());
  EXPECT_EQ(outcomes[1].status, 127);
  EXPECT_EQ(outcomes[1].words, "It was not started: those before it did not end in time.");
  EXPECT_EQ(mac.bytesOf("/tmp/file"), "x");
}

TEST_F(AppleTools, ThatReadFindTheEndOfTheirInputAtOnce) {
  mac.folder().putScript("/bin/tool", "cat; echo done");
  FileRef pipe = nullptr;
  EXPECT_EQ(start("/bin/tool", {}, &pipe), errAuthorizationSuccess);
  ASSERT_NE(pipe, nullptr);
  Files& files = mac.interfaces().files;
  EXPECT_EQ(readRest(files, pipe), "done\n");
  EXPECT_EQ(files.fclose(pipe), 0);
  EXPECT_TRUE(tools().wait(10s));
}

TEST_F(AppleTools, ThatAreReadGiveNoPipeWhereTheyAreNotStarted) {
  FileRef pipe = reinterpret_cast<FileRef>(this);
  EXPECT_EQ(start("/bin/missing", {}, &pipe), errAuthorizationToolExecuteFailure);
  EXPECT_EQ(pipe, nullptr);
  EXPECT_TRUE(ended().empty());
}

TEST_F(AppleTools, OfWhichALaterOneCannotBeStartedSaySo) {
  putHeldTool("/usr/bin/defaults");
  EXPECT_EQ(start("/usr/bin/defaults"), errAuthorizationSuccess);
  EXPECT_EQ(start("/bin/missing"), errAuthorizationSuccess);
  release();
  const auto outcomes = ended();
  ASSERT_EQ(outcomes.size(), 2u);
  EXPECT_EQ(outcomes[1].status, 127);
  EXPECT_EQ(outcomes[1].words, "It was not started: error -60031.");
}

}  // namespace
}  // namespace norvik
