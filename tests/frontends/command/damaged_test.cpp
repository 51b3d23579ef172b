// Settings files that are there and cannot be read, and stored values that cannot be: what is said about
// them, what is refused, and how they are replaced or restored.
#include <gtest/gtest.h>

#include "src/adapters/property_lists/codec.h"
#include "tests/frontends/command/sandbox_run.h"
#include "tests/support/files.h"

namespace norvik::command {
namespace {

namespace fs = std::filesystem;

constexpr const char* kLaunchdFile = "/etc/launchd.conf";

class DamagedTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(box.run({"set", "rdp.port=7999", "nvk.printing=off"}).status, 0); }

  void damage() const { box.write(kServerFile, box.read(kServerFile).substr(0, 500)); }
  std::string messageAbout(const char* file) const { return std::string(file) + ", is damaged: "; }

  // It is said by reading and by changing commands, and nothing is written over.
  void expectRefused(const Fault& fault, const char* file, const Words& change) const {
    const auto before = box.files();
    const Result status = box.runWith(fault, {"status"});
    EXPECT_EQ(status.status, 0);
    EXPECT_NE(status.err.find("norvikctl: warning: "), std::string::npos);
    EXPECT_NE(status.err.find(messageAbout(file)), std::string::npos) << status.err;
    const Result result = box.runWith(fault, change);
    EXPECT_EQ(result.status, 66) << result.out << result.err;
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find("Nothing was changed.\n"), std::string::npos) << result.err;
    EXPECT_EQ(box.runWith(fault, {"validate"}).status, 66);
    EXPECT_EQ(box.files(), before);
  }
  void expectRefused(const std::string& bytes) const {
    box.write(kServerFile, bytes);
    expectRefused({}, kServerFile, {"set", "image.depth=7"});
  }

  SandboxRun box;
};

TEST_F(DamagedTest, ATornFile) {
  expectRefused(box.read(kServerFile).substr(0, 500));
}

TEST_F(DamagedTest, ARawAmpersandInAKeyOfSomebodyElse) {
  std::string bytes = box.read(kServerFile);
  const std::size_t at = bytes.find("Sandbox");
  ASSERT_NE(at, std::string::npos);
  expectRefused(bytes.replace(at, 7, "Sand & Box"));
  EXPECT_NE(box.run({"validate"}).out.find(" is damaged: line "), std::string::npos);
}

TEST_F(DamagedTest, AZeroByteBehindTheEnd) {
  expectRefused(box.read(kServerFile) + '\0');
}

TEST_F(DamagedTest, ABinaryFileWithoutItsEnd) {
  const std::string bytes = encodeBinaryPropertyList(box.list(kServerFile));
  expectRefused(bytes.substr(0, bytes.size() - 9));
}

TEST_F(DamagedTest, AFolderInThePlaceOfTheFile) {
  fs::remove(box.folder() / "etc/norvik/svr.cfg");
  fs::create_directory(box.folder() / "etc/norvik/svr.cfg");
  expectRefused({}, kServerFile, {"set", "image.depth=7"});
  EXPECT_EQ(box.run({"set", "image.depth=7", "--answer", "damaged=replace"}).status, 66);
}

// The super-user may read every file, so the system's answer is put in its place.
TEST_F(DamagedTest, AFileThatMayNotBeReadIsNeverReplaced) {
  const Fault fault{
      .calls = "open-read", .effect = "EACCES", .path = "*/etc/norvik/svr.cfg", .program = "norvikctl"};
  expectRefused(fault, kServerFile, {"set", "image.depth=7"});
  const auto before = box.files();
  EXPECT_EQ(box.runWith(fault, {"set", "image.depth=7", "--answer", "damaged=replace"}).status, 66);
  EXPECT_EQ(box.files(), before);
}

TEST_F(DamagedTest, AnErrorOfTheMedium) {
  for (const char* call : {"open-read", "read"}) {
    expectRefused({.calls = call, .effect = "EIO", .path = "*/etc/norvik/svr.cfg", .program = "norvikctl"},
                  kServerFile, {"set", "image.depth=7"});
  }
}

TEST_F(DamagedTest, AFileOfLinesWithALetterOfAnotherEncoding) {
  box.write(kLaunchdFile,
            "# Gr\xfc\xdf"
            "e\nlimit maxfiles 256 512\nsetenv EDITOR vi\n");
  expectRefused({}, kLaunchdFile, {"--no-reboot", "limits", "adjust"});
}

TEST_F(DamagedTest, AFileOfTheUsersOwn) {
  box.write(kAgentFile, "<plist><dict>");
  expectRefused({}, kAgentFile, {"set", "user.mouse.swap=on"});
}

// What holds by default may not hold in the file.
TEST_F(DamagedTest, AWishThatSeemsToHoldIsRefusedToo) {
  damage();
  EXPECT_EQ(box.run({"set", "nvk.printing=on"}).status, 66);
  EXPECT_EQ(box.run({"set", "nvk.printing=on", "--dry-run"}).status, 66);
}

TEST_F(DamagedTest, OtherFilesAreSavedAllTheSame) {
  damage();
  const std::string bytes = box.read(kServerFile);
  const Result result = box.run({"set", "user.mouse.swap=on"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_NE(result.err.find(messageAbout(kServerFile)), std::string::npos);
  EXPECT_EQ(box.read(kServerFile), bytes);
}

TEST_F(DamagedTest, JsonNamesTheFileTheReasonAndTheCopy) {
  damage();
  for (const Words& words : {Words{"status"}, Words{"show"}, Words{"get", "nvk.port"}, Words{"limits"},
                             Words{"set", "image.depth=7"}}) {
    const auto object = box.json(words);
    ASSERT_EQ(object["damaged"].size(), 1U) << words[0];
    EXPECT_EQ(object["damaged"][0]["file"], kServerFile);
    EXPECT_TRUE(object["damaged"][0]["reason"].get<std::string>().starts_with("line "));
    EXPECT_TRUE(object["damaged"][0]["copy"].is_string());
    EXPECT_EQ(object["warnings"].size(), 1U);
  }
  EXPECT_EQ(box.json({"set", "image.depth=7"})["error"]["code"], "damaged");
}

TEST_F(DamagedTest, ReplacedOnRequestWithTheDamagedBytesKept) {
  damage();
  const std::string bytes = box.read(kServerFile);
  const Result result = box.run({"set", "image.depth=7", "--answer", "damaged=replace"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_NE(result.err.find("is kept in /etc/norvik/svr.cfg.damaged."), std::string::npos) << result.err;
  EXPECT_EQ(box.read("/etc/norvik/svr.cfg.damaged"), bytes);
  EXPECT_EQ(box.run({"get", "image.depth", "rdp.port"}).out, "7\n3389\n");
  EXPECT_EQ(box.run({"validate"}).status, 0);
}

TEST_F(DamagedTest, RestoredOnRequestBeforeTheChange) {
  damage();
  const Result result = box.run({"set", "nvk.printing=on", "image.depth=7", "--answer", "damaged=restore"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(box.run({"get", "nvk.printing", "image.depth", "rdp.port"}).out, "on\n7\n7999\n");
  EXPECT_EQ(*box.list(kServerFile).find("LicenseHolder")->as<std::string>(), "Sandbox");
  EXPECT_TRUE(fs::exists(box.folder() / "etc/norvik/svr.cfg.damaged"));
}

TEST_F(DamagedTest, APersonIsAskedAtTheTerminal) {
  damage();
  const Result declined = box.runAtTerminal({"set", "image.depth=7"}, "\n");
  EXPECT_EQ(declined.status, 66);
  EXPECT_NE(declined.out.find("  1  Cancel  (default)\n  2  Restore the Copy\n  3  Replace the File\n"),
            std::string::npos)
      << declined.out;
  const Result restored = box.runAtTerminal({"set", "image.depth=7"}, "restore\n");
  EXPECT_EQ(restored.status, 0) << restored.out;
  EXPECT_EQ(countOf(restored.out, "Your choice"), 1);
  EXPECT_EQ(box.run({"get", "image.depth", "rdp.port"}).out, "7\n7999\n");
}

TEST_F(DamagedTest, RestorePutsTheCopyBack) {
  const std::string nothing = "Nothing is damaged, so there is nothing to restore.\n";
  EXPECT_EQ(box.run({"restore"}).out, nothing);
  damage();
  const Result result = box.run({"restore"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_NE(result.out.find("Restored  the server's settings file\n"), std::string::npos) << result.out;
  EXPECT_EQ(box.run({"get", "rdp.port", "nvk.printing"}).out, "7999\noff\n");
  EXPECT_EQ(box.run({"restore", kServerFile}).out, nothing);
  EXPECT_EQ(box.run({"restore", "/etc/passwd"}).status, 64);
}

TEST_F(DamagedTest, WithoutACopyThereIsNothingToRestore) {
  fs::remove_all(box.folder() / ".norvik/state");
  damage();
  const std::string bytes = box.read(kServerFile);
  EXPECT_EQ(box.run({"restore"}).status, 66);
  EXPECT_EQ(box.run({"set", "image.depth=7", "--answer", "damaged=restore"}).status, 66);
  EXPECT_EQ(box.read(kServerFile), bytes);
}

TEST_F(DamagedTest, AStoredValueThatCannotBe) {
  PropertyList server = box.list(kServerFile);
  server.as<PropertyList::Dictionary>()->insert_or_assign("ActionOnConnect", int64_t{7});
  box.write(kServerFile, encodeXmlPropertyList(server));
  EXPECT_NE(box.run({"status"}).err.find("\"ActionOnConnect\" in /etc/norvik/svr.cfg is 7;"),
            std::string::npos);
  const auto object = box.json({"validate"});
  EXPECT_EQ(object["error"]["status"], 65);
  EXPECT_EQ(object["impossible"][0]["key"], "ActionOnConnect");
  EXPECT_EQ(box.run({"validate"}).status, 65);
}

TEST_F(DamagedTest, AFileOfAnyPlaceIsCheckedAsServerSettings) {
  const auto validate = [&](const std::string& bytes) {
    writeFile(box.beside("file"), bytes);
    return box.run({"validate", box.beside("file")});
  };
  EXPECT_EQ(validate(box.read(kServerFile)).out, "Nothing is wrong with it.\n");
  EXPECT_EQ(validate("").status, 66);
  EXPECT_EQ(validate("<plist>").status, 66);
  EXPECT_EQ(validate(serverConfiguration(70000, 3389)).status, 65);
  EXPECT_EQ(box.run({"validate", box.beside("missing")}).status, 66);
  EXPECT_NE(box.run({"validate", "/etc"}).out.find("it is no regular file"), std::string::npos);
}

}  // namespace
}  // namespace norvik::command
