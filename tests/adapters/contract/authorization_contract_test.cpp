// The contract of the authorization service: who is granted rights, and the tools that are then started.
#include <array>

#include "tests/adapters/contract/computer_under_test.h"

namespace norvik {
namespace {

constexpr std::string_view kRight = "system.privilege.admin";
constexpr AuthorizationFlags kSilently = kAuthorizationFlagExtendRights;
constexpr AuthorizationFlags kAsking = kAuthorizationFlagExtendRights | kAuthorizationFlagInteractionAllowed;

class AuthorizationContract : public ContractTest {
 protected:
  AuthorizationRef make() {
    AuthorizationRef made = nullptr;
    EXPECT_EQ(service.AuthorizationCreate({}, kAuthorizationFlagDefaults, made), errAuthorizationSuccess);
    EXPECT_NE(made, nullptr);
    return made;
  }
  OSStatus request(AuthorizationRef authorization, AuthorizationFlags flags) {
    const std::array<AuthorizationItem, 2> rights{{{kRight, "/bin/mv"}, {kRight, "/bin/chmod"}}};
    return service.AuthorizationCopyRights(authorization, rights, flags);
  }
  // Which error it is depends on who would have had to be asked.
  static bool isRefusal(OSStatus status) {
    return status == errAuthorizationDenied || status == errAuthorizationCanceled ||
           status == errAuthorizationInteractionNotAllowed;
  }
  void free(AuthorizationRef authorization) {
    EXPECT_EQ(service.AuthorizationFree(authorization, kAuthorizationFlagDestroyRights),
              errAuthorizationSuccess);
  }

  AuthorizationService& service = interfaces.authorization;
};

INSTANTIATE_TEST_SUITE_P(Every, AuthorizationContract, everyAdapter(), adapterName);

TEST_P(AuthorizationContract, RefusesSilentlyBeforeAnybodyWasAsked) {
  const AuthorizationRef authorization = make();
  EXPECT_TRUE(isRefusal(request(authorization, kSilently)));
  free(authorization);
}

TEST_P(AuthorizationContract, GrantsToAnAdministratorWhoIsAsked) {
  const AuthorizationRef authorization = make();
  EXPECT_EQ(request(authorization, kAsking), errAuthorizationSuccess);
  free(authorization);
}

TEST_P(AuthorizationContract, RefusesOthersWhoAreAsked) {
  computer->setAdministrator(false);
  const AuthorizationRef authorization = make();
  EXPECT_TRUE(isRefusal(request(authorization, kAsking)));
  EXPECT_TRUE(isRefusal(request(authorization, kSilently)));
  free(authorization);
}

TEST_P(AuthorizationContract, RefusesSilentlyAfterTheGrantWasGivenUp) {
  const AuthorizationRef authorization = make();
  EXPECT_EQ(request(authorization, kAsking), errAuthorizationSuccess);
  free(authorization);
  const AuthorizationRef next = make();
  EXPECT_TRUE(isRefusal(request(next, kSilently)));
  free(next);
}

TEST_P(AuthorizationContract, KeepsReferencesApart) {
  const AuthorizationRef one = make();
  const AuthorizationRef other = make();
  EXPECT_NE(one, other);
  free(one);
  EXPECT_EQ(request(other, kAsking), errAuthorizationSuccess);
  free(other);
}

// It would be a change of the computer's policy, which nobody may make.
TEST_P(AuthorizationContract, RemovesNoRight) {
  const AuthorizationRef authorization = make();
  EXPECT_EQ(service.AuthorizationRightRemove(authorization, kRight), errAuthorizationDenied);
  EXPECT_EQ(request(authorization, kAsking), errAuthorizationSuccess);
  EXPECT_EQ(service.AuthorizationRightRemove(authorization, kRight), errAuthorizationDenied);
  computer->putTool("/usr/sbin/sysctl", {"-n", "kern.maxfiles"}, "12288\n");
  const std::array<const char*, 3> arguments{"-n", "kern.maxfiles", nullptr};
  EXPECT_EQ(service.AuthorizationExecuteWithPrivileges(authorization, "/usr/sbin/sysctl", 0, arguments.data(),
                                                       nullptr),
            errAuthorizationSuccess);
  computer->waitForTools();
  free(authorization);
}

TEST_P(AuthorizationContract, RecognisesAnInvalidReference) {
  const AuthorizationRef freed = make();
  free(freed);
  const std::array<const char*, 1> none{nullptr};
  for (const AuthorizationRef authorization : {AuthorizationRef{nullptr}, freed}) {
    EXPECT_EQ(request(authorization, kAsking), errAuthorizationInvalidRef);
    EXPECT_EQ(service.AuthorizationRightRemove(authorization, kRight), errAuthorizationInvalidRef);
    EXPECT_EQ(service.AuthorizationFree(authorization, kAuthorizationFlagDefaults),
              errAuthorizationInvalidRef);
    EXPECT_EQ(service.AuthorizationExecuteWithPrivileges(authorization, "/bin/mv", 0, none.data(), nullptr),
              errAuthorizationInvalidRef);
  }
}

// With an authorization that an administrator has granted.
class ToolsContract : public AuthorizationContract {
 protected:
  void SetUp() override { ASSERT_EQ(request(authorization, kAsking), errAuthorizationSuccess); }
  void TearDown() override {
    computer->waitForTools();
    free(authorization);
  }

  OSStatus start(const char* path, std::vector<const char*> arguments, FileRef* pipe = nullptr) {
    arguments.push_back(nullptr);
    return service.AuthorizationExecuteWithPrivileges(authorization, path, kAuthorizationFlagDefaults,
                                                      arguments.data(), pipe);
  }
  // What the tool prints when it is started.
  std::string outputOf(const char* path, const std::vector<const char*>& arguments) {
    FileRef pipe = nullptr;
    EXPECT_EQ(start(path, arguments, &pipe), errAuthorizationSuccess);
    if (pipe == nullptr) return "no pipe";
    std::string output = readRest(interfaces.files, pipe);
    interfaces.files.fclose(pipe);
    return output;
  }

  const AuthorizationRef authorization = make();
};

INSTANTIATE_TEST_SUITE_P(Every, ToolsContract, everyAdapter(), adapterName);

TEST_P(ToolsContract, ReadsWhatAToolPrints) {
  computer->putTool("/usr/sbin/sysctl", {"-n", "kern.maxfiles"}, "12288\n");
  EXPECT_EQ(outputOf("/usr/sbin/sysctl", {"-n", "kern.maxfiles"}), "12288\n");
}

TEST_P(ToolsContract, ReadsNothingFromAToolThatPrintsNothing) {
  computer->putTool("/usr/sbin/sysctl", {"-n", "kern.maxfiles"}, "");
  EXPECT_EQ(outputOf("/usr/sbin/sysctl", {"-n", "kern.maxfiles"}), "");
}

TEST_P(ToolsContract, HandsOverArgumentsUpToTheFirstNull) {
  computer->putTool("/usr/sbin/sysctl", {"one"}, "just one");
  EXPECT_EQ(outputOf("/usr/sbin/sysctl", {"one", nullptr, "three"}), "just one");
}

TEST_P(ToolsContract, ReadsLongOutputInPieces) {
  const std::string output(200000, 'x');
  computer->putTool("/usr/sbin/sysctl", {"-a"}, output);
  EXPECT_EQ(outputOf("/usr/sbin/sysctl", {"-a"}), output);
}

// The tool that is then left without a reader must neither block nor harm its starter.
TEST_P(ToolsContract, ClosesAPipeBeforeItsEnd) {
  computer->putTool("/usr/sbin/sysctl", {"-a"}, std::string(200000, 'x'));
  FileRef pipe = nullptr;
  ASSERT_EQ(start("/usr/sbin/sysctl", {"-a"}, &pipe), errAuthorizationSuccess);
  ASSERT_NE(pipe, nullptr);
  std::array<char, 5> block{};
  EXPECT_EQ(interfaces.files.fread(block.data(), block.size(), pipe), block.size());
  interfaces.files.fclose(pipe);
  computer->waitForTools();
}

TEST_P(ToolsContract, SeeksInNoPipe) {
  computer->putTool("/usr/sbin/sysctl", {"-a"}, "text");
  FileRef pipe = nullptr;
  ASSERT_EQ(start("/usr/sbin/sysctl", {"-a"}, &pipe), errAuthorizationSuccess);
  ASSERT_NE(pipe, nullptr);
  EXPECT_EQ(interfaces.files.fseek(pipe, 0, SeekOrigin::end), -1);
  EXPECT_EQ(interfaces.files.ftell(pipe), -1);
  EXPECT_EQ(readRest(interfaces.files, pipe), "text");
  interfaces.files.fclose(pipe);
}

TEST_P(ToolsContract, RefusesAToolThatCannotBeStarted) {
  computer->refuseTool("/bin/mv");
  computer->putFile("/tmp/new", "x");
  FileRef pipe = nullptr;
  EXPECT_EQ(start("/bin/mv", {"-f", "/tmp/new", "/tmp/moved"}), errAuthorizationToolExecuteFailure);
  EXPECT_EQ(start("/bin/mv", {"-f", "/tmp/new", "/tmp/moved"}, &pipe), errAuthorizationToolExecuteFailure);
  EXPECT_EQ(pipe, nullptr);
  computer->waitForTools();
  EXPECT_EQ(computer->bytesOf("/tmp/moved"), std::nullopt);
}

TEST_P(ToolsContract, StartsAToolThatThenFails) {
  EXPECT_EQ(start("/bin/mv", {"-f", "/tmp/missing", "/tmp/moved"}), errAuthorizationSuccess);
  computer->waitForTools();
  EXPECT_EQ(computer->bytesOf("/tmp/moved"), std::nullopt);
}

TEST_P(ToolsContract, TakesEffectInTheOrderOfStarting) {
  for (int round = 0; round < 10; ++round) {
    computer->putFile("/tmp/new", std::to_string(round));
    EXPECT_EQ(start("/bin/mv", {"-f", "/tmp/new", "/etc/norvik/svr.cfg"}), errAuthorizationSuccess);
    EXPECT_EQ(start("/bin/chmod", {"600", "/etc/norvik/svr.cfg"}), errAuthorizationSuccess);
    computer->waitForTools();
    EXPECT_EQ(computer->bytesOf("/etc/norvik/svr.cfg"), std::to_string(round));
    EXPECT_EQ(computer->modeOf("/etc/norvik/svr.cfg"), 0600u);
    EXPECT_EQ(computer->bytesOf("/tmp/new"), std::nullopt);
  }
}

}  // namespace
}  // namespace norvik
