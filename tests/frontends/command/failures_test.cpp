// What can fail: files that cannot be written, tools that fail unseen, rights that are not granted.
#include <gtest/gtest.h>

#include "tests/frontends/command/sandbox_run.h"

namespace norvik::command {
namespace {

namespace fs = std::filesystem;

class FailuresTest : public testing::Test {
 protected:
  SandboxRun box;
};

TEST_F(FailuresTest, AUserFileThatCannotBeWritten) {
  fs::remove_all(box.folder() / "Users/user/Library");
  box.write("/Users/user/Library", "a file in the place of the folder");
  const Result result = box.run({"set", "user.mouse.swap=on"});
  EXPECT_EQ(result.status, 73);
  EXPECT_NE(result.out.find("Not saved  user.mouse.swap\n"), std::string::npos) << result.out;
  EXPECT_EQ(result.out.find("Saved"), std::string::npos);
  EXPECT_NE(result.err.find(std::string("Norvik[E]: Could not write file: ") + kAgentFile), std::string::npos)
      << result.err;
}

TEST_F(FailuresTest, AHomeWithoutAFolderForPreferences) {
  fs::remove_all(box.folder() / "Users/user/Library");
  const Result result = box.run({"set", "user.mouse.swap=on", "notify.news=off"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(box.run({"get", "user.mouse.swap", "notify.news"}).out, "on\noff\n");
}

// The file is in place, so only the refusal itself shows that something is missing.
TEST_F(FailuresTest, AToolThatCannotBeLaunchedAfterTheFileWasMoved) {
  fs::remove(box.folder() / "usr/sbin/nvkservice");
  const Result result = box.run({"set", "nvk.sound=off"});
  EXPECT_EQ(result.status, 77);
  EXPECT_NE(result.err.find("norvikctl: The system refused to run the command /usr/sbin/nvkservice apply.\n"),
            std::string::npos)
      << result.err;
  EXPECT_EQ(box.run({"get", "nvk.sound"}).out, "off\n");
}

// What a preview logs comes from withholding the effects, and is nothing for a person.
TEST_F(FailuresTest, APreviewThatEndsTheCommandShowsOnlyTheReason) {
  ASSERT_EQ(
      box.run({"--answer", "graphics=yes", "--no-reboot", "set", "system.compositing.disable=on"}).status, 0);
  box.write("/.norvik/kernel", "");
  const Result result = box.run({"set", "system.compositing.disable=off"});
  EXPECT_EQ(result.status, 64);
  EXPECT_EQ(countOf(result.err, "\n"), 1) << result.err;
  EXPECT_NE(result.err.find("the question \"Reboot is required\" needs an answer"), std::string::npos);
}

TEST_F(FailuresTest, AToolThatCannotBeLaunched) {
  fs::remove(box.folder() / "bin/mv");
  const Result result = box.run({"set", "nvk.sound=off"});
  EXPECT_EQ(result.status, 77);
  EXPECT_NE(result.err.find("Norvik[E]: Could not write file: /etc/norvik/svr.cfg"), std::string::npos)
      << result.err;
  EXPECT_NE(result.out.find("Not saved  nvk.sound\n"), std::string::npos);
}

// The pane never notices it; the file, read again, shows it.
TEST_F(FailuresTest, AToolThatFailsUnseen) {
  box.replaceProgram("/bin/mv", "exit 1");
  const Result result = box.run({"set", "nvk.sound=off", "user.mouse.swap=on"});
  EXPECT_EQ(result.status, 73);
  EXPECT_NE(result.err.find("norvikctl: The file could not be put in its place: /bin/mv -f /tmp/"),
            std::string::npos)
      << result.err;
  EXPECT_NE(result.out.find("Saved      user settings\nNot saved  nvk.sound\n"), std::string::npos)
      << result.out;
  EXPECT_EQ(box.run({"get", "nvk.sound", "user.mouse.swap"}).out, "on\non\n");

  const Result limit = box.run({"limits", "adjust", "--no-reboot"});
  EXPECT_EQ(limit.status, 73);
  EXPECT_NE(limit.out.find("Not saved  open files limit\n"), std::string::npos) << limit.out;
}

TEST_F(FailuresTest, RightsThatAreNotGiven) {
  box.write("/.norvik/authorization", "refused\n");
  const auto before = box.files();
  for (const Words& words :
       {Words{"set", "nvk.sound=off"}, Words{"set", "user.mouse.swap=on", "nvk.sound=off"}, Words{"start"},
        Words{"displays"}, Words{"access"}, Words{"limits", "adjust"}}) {
    const Result result = box.run(words);
    EXPECT_EQ(result.status, 77) << words[0];
    EXPECT_EQ(result.err, "norvikctl: This needs administrator rights, which were not granted.\n");
  }
  EXPECT_EQ(box.files(), before);
}

TEST_F(FailuresTest, UserSettingsNeedNoRights) {
  box.write("/.norvik/authorization", "refused\n");
  EXPECT_EQ(box.run({"set", "user.mouse.swap=on"}).status, 0);
  EXPECT_EQ(box.run({"get", "user.mouse.swap"}).out, "on\n");
}

TEST_F(FailuresTest, OnTheComputerItselfOnlyUserSettingsCanBeChanged) {
  const fs::path home = box.beside("home");
  fs::create_directory(home);
  const Result server = runProgram("norvikctl", {"set", "nvk.sound=off"}, home);
  EXPECT_EQ(server.status, 77) << server.out << server.err;
  const Result user = runProgram("norvikctl", {"set", "user.mouse.swap=on"}, home);
  EXPECT_EQ(user.status, 0) << user.err;
  EXPECT_EQ(runProgram("norvikctl", {"get", "user.mouse.swap"}, home).out, "on\n");
}

}  // namespace
}  // namespace norvik::command
