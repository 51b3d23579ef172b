// Saves that fail: tools that fail, hang or are missing, files that cannot be written, and each operation of
// a save failing or ending the program in turn. Saved is only what can be read back.
#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/frontends/command/sandbox_run.h"
#include "tests/support/files.h"

namespace norvik::command {
namespace {

namespace fs = std::filesystem;

class FailingSavesTest : public testing::Test {
 protected:
  // The tool that moves files waits until it may go on.
  void holdMove() const {
    fs::copy_file(box.folder() / "bin/mv", box.beside("mv"));
    box.replaceProgram("/bin/mv", "while [ ! -e " + box.beside("go").string() +
                                      " ]; do sleep 0.01; done; exec " + box.beside("mv").string() +
                                      " \"$@\"");
  }
  void letMove() const { writeFile(box.beside("go"), ""); }

  std::string get(const std::string& name) const { return box.run({"get", name}).out; }

  SandboxRun box;
};

TEST_F(FailingSavesTest, AServerThatDoesNotTakeUpItsSettings) {
  box.replaceProgram("/usr/sbin/nvkservice", "echo the daemon does not answer >&2; exit 4");
  const auto outcome = box.json({"set", "nvk.sound=off"});
  EXPECT_EQ(outcome["error"]["status"], 69);
  EXPECT_NE(outcome["error"]["message"].get<std::string>().find("the daemon does not answer"),
            std::string::npos);
  EXPECT_EQ(outcome["commands"][3]["outcome"], "failed");
  EXPECT_EQ(outcome["commands"][3]["status"], 4);
  EXPECT_EQ(outcome["commands"][3]["words"], "the daemon does not answer");
  EXPECT_EQ(outcome["saved"], nlohmann::json({"server settings"}));
  EXPECT_EQ(outcome["notTold"], nlohmann::json({"the server"}));
  EXPECT_EQ(get("nvk.sound"), "off\n");
}

TEST_F(FailingSavesTest, ASlowToolIsWaitedFor) {
  holdMove();
  RunningProgram set = box.start({"set", "nvk.sound=off"}, "set");
  EXPECT_FALSE(set.ending(std::chrono::milliseconds(500)).has_value());
  letMove();
  EXPECT_EQ(set.status(), 0);
  EXPECT_EQ(get("nvk.sound"), "off\n");
}

// Nothing overtakes it, nobody else changes anything before it has ended, and in the end all is done.
TEST_F(FailingSavesTest, AToolThatHangsIsATimeOut) {
  holdMove();
  const auto outcome = box.json({"set", "nvk.sound=off", "--wait-tools", "1"});
  EXPECT_EQ(outcome["error"]["status"], 75);
  EXPECT_EQ(outcome["commands"][0]["outcome"], "running");
  EXPECT_EQ(outcome["commands"][1]["outcome"], "waiting");
  EXPECT_EQ(outcome["saved"], nlohmann::json::array());
  EXPECT_EQ(box.read("/.norvik/log/tools.log"), "");
  EXPECT_EQ(box.run({"set", "rdp.sound=off", "--dry-run"}).status, 0) << "takes no lock";
  const Result other = box.run({"set", "rdp.sound=off", "--wait-lock", "0"});
  EXPECT_EQ(other.status, 75);
  EXPECT_NE(other.err.find("norvikctl: Another program is changing the settings. Nothing was changed.\n"),
            std::string::npos)
      << other.err;
  letMove();
  EXPECT_EQ(box.run({"set", "rdp.sound=off"}).status, 0);
  EXPECT_EQ(box.run({"get", "nvk.sound", "rdp.sound"}).out, "off\noff\n");
}

TEST_F(FailingSavesTest, AHomeThatIsReadOnly) {
  const auto before = box.files();
  for (const auto& [setting, file] :
       {std::pair{"user.mouse.swap=on", kAgentFile}, {"notify.news=off", kMenuAgentFile}}) {
    const Result result = box.runWith(
        {.calls = "open-write,mkdir", .effect = "EROFS", .path = "*/Users/user/*"}, {"set", setting});
    EXPECT_EQ(result.status, 73) << result.out;
    EXPECT_EQ(result.out.find("Saved"), std::string::npos) << result.out;
    EXPECT_NE(result.err.find(std::string(file) + ", could not be written: Read-only file system."),
              std::string::npos)
        << result.err;
  }
  EXPECT_EQ(box.files(), before);
}

// The limit is on the size of a file, so the settings file is full when its first block is.
TEST_F(FailingSavesTest, ADiskThatIsFull) {
  ASSERT_EQ(box.run({"set", "user.mouse.swap=on"}).status, 0);
  PropertyList own = box.list(kAgentFile);
  own.as<PropertyList::Dictionary>()->insert_or_assign("Foreign", std::string(2000, 'x'));
  box.write(kAgentFile, encodeXmlPropertyList(own));
  const std::string before = box.read(kAgentFile);
  const std::string command = builtProgram("norvikctl") + " --root " + box.folder().string();
  const Result result =
      runProgram("/bin/bash", {"-c", "ulimit -f 1; " + command + " set user.mouse.swap=off"}, box.beside(""));
  EXPECT_EQ(result.status, 73) << result.out << result.err;
  EXPECT_NE(result.err.find("could not be written: File too large."), std::string::npos) << result.err;
  EXPECT_EQ(box.read(kAgentFile), before);
  EXPECT_EQ(box.run({"set", "user.mouse.swap=off"}).status, 0);
}

TEST_F(FailingSavesTest, ABusThatIsGoneIsSaid) {
  box.write("/.norvik/bus", "unix:path=" + box.beside("nowhere").string() + "\n");
  const auto outcome = box.json({"set", "notify.news=off"});
  EXPECT_EQ(outcome["ok"], true);
  EXPECT_EQ(outcome["told"], nlohmann::json::array());
  EXPECT_EQ(outcome["notTold"], nlohmann::json({"the menu agent"}));
  EXPECT_EQ(outcome["warnings"], nlohmann::json({"Nobody could tell the menu agent about the change."}));
}

// The tool that moves the file into its place, with the system's words.
TEST_F(FailingSavesTest, AMoveThatTheSystemRefuses) {
  holdMove();
  std::string variables;
  for (const auto& [name, value] : environmentOf({.calls = "rename", .effect = "EROFS"})) {
    variables += " " + name + "='" + value + "'";
  }
  box.replaceProgram("/bin/mv", "exec env" + variables + " " + box.beside("mv").string() + " \"$@\"");
  const auto outcome = box.json({"set", "nvk.sound=off"});
  EXPECT_EQ(outcome["error"]["status"], 73);
  EXPECT_NE(outcome["commands"][0]["words"].get<std::string>().find("Read-only file system"),
            std::string::npos)
      << outcome;
  EXPECT_EQ(outcome["notSaved"], nlohmann::json({"nvk.sound"}));
  EXPECT_EQ(get("nvk.sound"), "on\n");
}

// What a save does to files, one operation after the other; the server's file is written anew and moved by a
// tool, the user's in place. Few of them; NORVIK_LONG tries all.
class EachOperationTest : public FailingSavesTest {
 protected:
  // Sets both to what they are not.
  Words change() {
    isOn_ = !isOn_;
    return {"set", isOn_ ? "nvk.sound=on" : "nvk.sound=off",
            isOn_ ? "user.mouse.swap=on" : "user.mouse.swap=off"};
  }
  Fault fault(const std::string& effect, int number) const {
    return {.calls = "open-write,write,fallocate,ftruncate,fsync,close,rename,unlink,mkdir,chmod,chown",
            .effect = effect,
            .number = std::to_string(number),
            .path = box.folder().string() + "/*",
            .program = "norvikctl"};
  }
  // How many there are.
  int prepare() {
    EXPECT_EQ(box.run(change()).status, 0);
    Fault none = fault("NONE", 1);
    none.log = box.beside("operations");
    EXPECT_EQ(box.runWith(none, change()).status, 0);
    return countOf(contentOf(none.log), "\n");
  }
  static int step() { return std::getenv("NORVIK_LONG") != nullptr ? 1 : 4; }

  bool holds() const {
    const PropertyList server = box.list(kServerFile), own = box.list(kAgentFile);
    const PropertyList* service = server.find("NVKService");
    return service != nullptr && integerValue(service->find("SoundOutputEnabled")) == (isOn_ ? 1 : 0) &&
           integerValue(own.find("SwapMouseButtons")) == (isOn_ ? 1 : 0);
  }
  // What is said where a change is made and only its entry is lost.
  static constexpr const char* kNoHistory =
      "norvikctl: warning: The change is not in the history, as /.norvik/state/history.jsonl could not be "
      "written: Input/output error.\n";
  bool isOn_ = false;
};

TEST_F(EachOperationTest, ThatFailsIsSaidWhereItMatters) {
  const int count = prepare();
  int failed = 0;
  for (int number = 1; number <= count; number += step()) {
    const Result result = box.runWith(fault("EIO", number), change());
    EXPECT_TRUE(result.status == 0 || result.status == 73) << number << ": " << result.status << result.err;
    EXPECT_EQ(holds(), result.status == 0) << number << result.out << result.err;
    EXPECT_EQ(result.err.empty() || result.err == kNoHistory, result.status == 0) << number << result.err;
    EXPECT_TRUE(box.areFilesWhole()) << number;
    failed += result.status == 0 ? 0 : 1;
    ASSERT_EQ(box.run(change()).status, 0) << number;
    EXPECT_TRUE(holds()) << number;
  }
  EXPECT_GT(failed, 0);
}

TEST_F(EachOperationTest, ThatEndsTheProgramLosesNothing) {
  const int count = prepare();
  for (int number = 1; number <= count; number += step()) {
    EXPECT_EQ(box.runWith(fault("KILL", number), change()).status, -1) << number;
    EXPECT_TRUE(box.areFilesWhole()) << number;
    ASSERT_EQ(box.run(change()).status, 0) << number;
    EXPECT_TRUE(holds()) << number;
  }
}

}  // namespace
}  // namespace norvik::command
