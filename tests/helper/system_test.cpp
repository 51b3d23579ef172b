// The helper on a computer of its own: the real system bus, the real polkit, and people who are nobody
// special.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>

#include "src/adapters/linux/helper_interface.h"
#include "src/adapters/property_lists/codec.h"
#include "src/helper/service.h"
#include "src/server/mac/text/escape.h"
#include "tests/helper/computer.h"
#include "tests/helper/own_computer.h"
#include "tests/helper/terminal_dialog.h"

namespace norvik::helper {
namespace {

namespace fs = std::filesystem;

using Sentences = std::vector<std::string>;

bool has(const std::string& text, const std::string& part, std::size_t from = 0) {
  return text.find(part, from) != std::string::npos;
}

// The words of helper_caller for a line.
Words asking(const std::string& verb, const SpelledLine& line) {
  Words words{verb};
  words.insert(words.end(), line.begin(), line.end());
  words.push_back("end");
  return words;
}

Words operator+(Words first, const Words& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

const SpelledLine& applyLine() {
  return spelledLines()[4];
}

void putFileOf(uid_t user, const std::string& path, const std::string& bytes) {
  writeFile(path, bytes);
  ASSERT_EQ(::chown(path.c_str(), user, user), 0);
}

bool isReader(const SpelledLine& line) {
  return line[0] == "/usr/sbin/sysctl";
}

// The helper, of which this computer has one; empty where it has ended, as nobody waits for that here.
std::string helperProcess() {
  std::string pid = runProgram({"pgrep", "-x", "-r", "R,S,D", "norvik-helper"}).output;
  return pid.substr(0, pid.find('\n'));
}

struct HelperSystemTest : OwnComputerTest {
  void grantEverything() { setRule("com.veltrane.norvik.unlock", "YES"); }
};

TEST_F(HelperSystemTest, WithoutRightsEveryLineIsRefusedAndNothingIsDone) {
  putFileOf(kUser, kTemporaryList, listWith("new"));
  putFileOf(kUser, kTemporaryLines, "limit maxfiles 1 2\n");
  for (const SpelledLine& line : spelledLines()) {
    const std::string verb = isReader(line) ? "read" : "run";
    EXPECT_EQ(call(asking(verb, line)), line[0] + ": refused\n");
    std::string quotedLine;
    for (const std::string& word : line) quotedLine += (quotedLine.empty() ? "" : " ") + norvik::quoted(word);
    EXPECT_TRUE(log_->says("): " + quotedLine + ": refused: not authorized")) << log_->ofHelper();
  }
  EXPECT_TRUE(has(log_->ofHelper(), "uid 4242 (:1."));
  EXPECT_EQ(contentOf("/run/tools"), "");
  EXPECT_FALSE(fs::exists(kConfiguration));
  EXPECT_FALSE(fs::exists("/Library"));
  EXPECT_EQ(contentOf(kTemporaryList), listWith("new"));
  EXPECT_EQ(call({"check"}), "check: refused\n");
}

TEST_F(HelperSystemTest, WithRightsEveryLineIsCarriedOut) {
  grantEverything();
  putFileOf(kUser, kTemporaryList, listWith("new"));
  putFileOf(kUser, kTemporaryLines, "limit maxfiles 1 2\n");
  Words words;
  for (const SpelledLine& line : spelledLines())
    words = words + asking(isReader(line) ? "read" : "run", line);
  const std::string output = call(words + Words{"ends", "check"});
  for (const SpelledLine& line : spelledLines()) {
    EXPECT_TRUE(has(output, line[0] + ": launched\n")) << output;
    EXPECT_TRUE(has(output, line[0] + ": status 0\n")) << output;
  }
  EXPECT_FALSE(has(output, ": status 1"));
  EXPECT_TRUE(has(output, "check: granted\n"));
  EXPECT_TRUE(has(output, "/usr/sbin/sysctl: launched\n2147483647\n") ||
              has(output, "/usr/sbin/sysctl: launched\n" + contentOf("/proc/sys/fs/file-max")))
      << output;
  EXPECT_EQ(
      contentOf("/run/tools"),
      "/usr/sbin/nvkservice stop -w\n/usr/sbin/nvkservice start -f -w\n/usr/sbin/nvkservice dspcmd manage\n"
      "/usr/sbin/nvkservice admcmd manage\n/usr/sbin/nvkservice apply\n/sbin/reboot \n");
  EXPECT_EQ(contentOf(kConfiguration), listWith("new"));
  EXPECT_EQ(contentOf(kLaunchdConfiguration), "limit maxfiles 1 2\n");
  struct stat status {};
  ASSERT_EQ(::stat(kConfiguration, &status), 0);
  EXPECT_EQ(status.st_uid, 0U);
  EXPECT_EQ(status.st_mode & 07777U, 0644U);
  const auto list = decodePropertyList(contentOf("/Library/Preferences/com.apple.screensaver.plist"));
  ASSERT_TRUE(list);
  EXPECT_EQ(integerValue(list->find("loginWindowIdleTime")), 1200);
  EXPECT_FALSE(fs::exists(kTemporaryList));
  EXPECT_TRUE(log_->says("\"/usr/sbin/nvkservice\" \"apply\": done"));
  EXPECT_TRUE(log_->says(
      "\"/bin/mv\" \"-f\" \"/tmp/norvik.prefs.tmp.server.conf.812\" \"/etc/norvik/svr.cfg\": done"));
}

TEST_F(HelperSystemTest, OtherLinesAreRefusedWhateverTheRights) {
  grantEverything();
  EXPECT_EQ(call({"run", "/bin/mv", "-f", "/etc/shadow", "/etc/norvik/svr.cfg", "end"}),
            "/bin/mv: not possible\n");
  EXPECT_EQ(call({"run", "/bin/sh", "-c", "id\nsecond", "end"}), "/bin/sh: not possible\n");
  EXPECT_EQ(call(asking("read", applyLine())), "/usr/sbin/nvkservice: not possible\n");
  // One line of the log for each, whatever is in it.
  EXPECT_TRUE(
      log_->says("\"/bin/sh\" \"-c\" \"id\\nsecond\": refused: not a line of the tool command table\n"));
}

TEST_F(HelperSystemTest, AFinerRuleGrantsItsLinesAlone) {
  setRule("com.veltrane.norvik.control-server", "YES");
  EXPECT_EQ(call(asking("run", applyLine())), "/usr/sbin/nvkservice: launched\n");
  EXPECT_EQ(call(asking("run", setConfigurationMode())), "/bin/chmod: refused\n");
}

TEST_F(HelperSystemTest, ARevokedRightEndsAtTheNextLine) {
  grantEverything();
  RunningProgram caller(
      callerWords(asking("run", applyLine()) + Words{"touch", "/tmp/one", "await", "/tmp/two"} +
                  asking("run", applyLine()) + Words{"check"}),
      {.user = kUser}, "/tmp/caller");
  ASSERT_TRUE(eventually([] { return fs::exists("/tmp/one"); }));
  setRule("com.veltrane.norvik.unlock", "NO");
  writeFile("/tmp/two", "");
  EXPECT_EQ(caller.status(), 0);
  EXPECT_EQ(contentOf("/tmp/caller"),
            "/usr/sbin/nvkservice: launched\n/usr/sbin/nvkservice: refused\ncheck: refused\n");
}

TEST_F(HelperSystemTest, WithoutPolkitNothingIsGranted) {
  grantEverything();
  polkit_.reset();
  EXPECT_EQ(call(Words{"check", "unlock"} + asking("run", applyLine())),
            "check: no service\nunlock: no service\n/usr/sbin/nvkservice: refused\n");
  EXPECT_TRUE(log_->says("refused: polkit does not answer"));
  EXPECT_EQ(contentOf("/run/tools"), "");
}

TEST_F(HelperSystemTest, PolkitKilledWhileItIsAskedIsARefusal) {
  grantEverything();
  polkit_->send(SIGSTOP);
  RunningProgram caller(callerWords(asking("run", applyLine())), {.user = kUser}, "/tmp/caller");
  ASSERT_TRUE(eventually([] { return isOnBus(kHelperName); }));
  polkit_->send(SIGKILL);
  EXPECT_EQ(caller.status(), 0);
  // The helper may have asked by then, or find nobody to ask.
  const std::string said = contentOf("/tmp/caller");
  EXPECT_TRUE(said == "/usr/sbin/nvkservice: refused\n" || said == "/usr/sbin/nvkservice: not possible\n")
      << said;
}

TEST_F(HelperSystemTest, WithoutABusNothingIsGranted) {
  bus_.reset();
  EXPECT_EQ(call(Words{"check", "unlock"} + asking("run", applyLine())),
            "check: no service\nunlock: no service\n/usr/sbin/nvkservice: not possible\n");
}

TEST_F(HelperSystemTest, TheBusKilledInTheMiddleLosesTheOutcomeAndNotTheTool) {
  grantEverything();
  writeFile("/run/tool-script",
            "touch /tmp/begun; while [ ! -e /tmp/go ]; do sleep 0.01; done; touch /tmp/done\n");
  RunningProgram caller(callerWords(asking("run", applyLine()) + Words{"ends"}), {.user = kUser},
                        "/tmp/caller");
  ASSERT_TRUE(eventually([] { return fs::exists("/tmp/begun"); }));
  bus_.reset();
  EXPECT_EQ(caller.status(), 0);
  EXPECT_EQ(contentOf("/tmp/caller"),
            "/usr/sbin/nvkservice: launched\n"
            "/usr/sbin/nvkservice: signal 9: the helper is gone, and nobody knows how this ended\n");
  EXPECT_TRUE(eventually([] { return helperProcess().empty(); }));
  writeFile("/tmp/go", "");
  EXPECT_TRUE(eventually([] { return fs::exists("/tmp/done"); }));
}

TEST_F(HelperSystemTest, AHelperThatIsAskedToEndFinishesItsWork) {
  grantEverything();
  writeFile("/run/tool-script", "touch /tmp/begun; while [ ! -e /tmp/go ]; do sleep 0.01; done\n");
  RunningProgram caller(callerWords(asking("run", applyLine()) + Words{"ends"}), {.user = kUser},
                        "/tmp/caller");
  ASSERT_TRUE(eventually([] { return fs::exists("/tmp/begun"); }));
  const std::string first = helperProcess();
  ASSERT_EQ(::kill(std::stoi(first), SIGTERM), 0);
  EXPECT_TRUE(eventually([] { return !isOnBus(kHelperName); }));
  EXPECT_EQ(helperProcess(), first);
  writeFile("/tmp/go", "");
  EXPECT_EQ(caller.status(), 0);
  EXPECT_EQ(contentOf("/tmp/caller"), "/usr/sbin/nvkservice: launched\n/usr/sbin/nvkservice: status 0\n");
  EXPECT_TRUE(eventually([] { return helperProcess().empty(); }));
}

// As every server that nvkservice starts.
TEST_F(HelperSystemTest, AProcessThatAToolLeavesBehindNeitherDelaysTheEndNorDiesOfIt) {
  grantEverything();
  writeFile("/run/tool-script",
            "(while [ ! -e /tmp/go ]; do sleep 0.01; done; echo later >&2 && touch /tmp/lives) &\n");
  EXPECT_TRUE(has(call(asking("run", applyLine()) + Words{"ends"}), "status 0\n"));
  writeFile("/tmp/go", "");
  EXPECT_TRUE(eventually([] { return fs::exists("/tmp/lives"); }));
  // One that never stops talking.
  writeFile("/run/tool-script", "echo talking >&2\nyes talking >&2 &\nsleep 0.05\n");
  EXPECT_TRUE(has(call(asking("run", applyLine()) + Words{"ends"}), "status 0: talking"));
}

TEST_F(HelperSystemTest, NobodyElseIsToldOfAnEnd) {
  grantEverything();
  sd_bus* bus = nullptr;
  int heard = 0;
  ASSERT_GE(sd_bus_open_system(&bus), 0);
  const auto hear = [](sd_bus_message*, void* count, sd_bus_error*) { return ++*static_cast<int*>(count); };
  ASSERT_GE(sd_bus_match_signal(bus, nullptr, nullptr, kHelperPath, nullptr, nullptr, hear, &heard), 0);
  EXPECT_TRUE(has(call(asking("run", applyLine()) + Words{"ends"}), "status 0"));
  // What the bus sent before its reply has come with it.
  EXPECT_GE(sd_bus_call_method(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                               "GetId", nullptr, nullptr, ""),
            0);
  while (sd_bus_process(bus, nullptr) > 0) continue;
  EXPECT_EQ(heard, 0);
  sd_bus_flush_close_unref(bus);
}

TEST_F(HelperSystemTest, TheHelperKilledInTheMiddleIsNoticed) {
  grantEverything();
  writeFile("/run/tool-script", "kill -9 $PPID; touch /tmp/killed\n");
  EXPECT_EQ(call(asking("run", applyLine()) + Words{"ends"}),
            "/usr/sbin/nvkservice: launched\n"
            "/usr/sbin/nvkservice: signal 9: the helper is gone, and nobody knows how this ended\n");
}

TEST_F(HelperSystemTest, NothingOvertakesALineOfTheSameCaller) {
  grantEverything();
  putFileOf(kUser, kTemporaryList, listWith("new"));
  writeFile(
      "/run/tool-script",
      "while [ ! -e /tmp/go ]; do sleep 0.01; done; [ -e /etc/norvik/svr.cfg ] && touch /tmp/overtaken\n");
  RunningProgram caller(
      callerWords(asking("run", applyLine()) + asking("run", moveConfiguration()) +
                  asking("run", setConfigurationMode()) + Words{"touch", "/tmp/asked", "ends"}),
      {.user = kUser}, "/tmp/caller");
  ASSERT_TRUE(eventually([] { return fs::exists("/tmp/asked"); }));
  EXPECT_FALSE(fs::exists(kConfiguration));
  // Reading waits for nobody, and another caller does not either.
  EXPECT_TRUE(has(call(asking("run", setConfigurationMode()) + Words{"ends"}), "/bin/chmod: status 1"));
  writeFile("/tmp/go", "");
  EXPECT_EQ(caller.status(), 0);
  EXPECT_FALSE(fs::exists("/tmp/overtaken"));
  EXPECT_EQ(contentOf(kConfiguration), listWith("new"));
}

// The lock for changes.

bool isLocked(const char* folder) {
  const Descriptor descriptor(::open(folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return ::flock(descriptor.number(), LOCK_EX | LOCK_NB) != 0;
}

TEST_F(HelperSystemTest, TheLockOfAKilledCallerIsKeptUntilItsLinesHaveEnded) {
  grantEverything();
  writeFile("/run/tool-script", "while [ ! -e /tmp/go ]; do sleep 0.01; done\n");
  RunningProgram caller(
      callerWords(Words{"take"} + asking("run", applyLine()) + asking("run", setConfigurationMode()) +
                  Words{"touch", "/tmp/asked", "ends"}),
      {.user = kUser}, "/tmp/caller");
  ASSERT_TRUE(eventually([] { return fs::exists("/tmp/asked"); }));
  ASSERT_TRUE(eventually([] { return has(contentOf("/run/tools"), "apply"); }));
  EXPECT_TRUE(isLocked("/etc/norvik"));
  caller.send(SIGKILL);
  EXPECT_EQ(caller.ending()->signal, SIGKILL);
  EXPECT_TRUE(isLocked("/etc/norvik"));
  // Nothing of it reaches the tool.
  EXPECT_EQ(contentOf("/run/tool-descriptors"), "0\n1\n2\n3\n");
  EXPECT_EQ(call({"take"}), "take: busy\n");
  writeFile("/tmp/go", "");
  EXPECT_TRUE(eventually([] { return !isLocked("/etc/norvik"); }));
}

TEST_F(HelperSystemTest, WhoKnowsOfTheEndFindsTheLockFree) {
  grantEverything();
  for (int i = 0; i < 20; ++i) {
    call(Words{"take"} + asking("run", applyLine()) + Words{"ends"});
    EXPECT_FALSE(isLocked("/etc/norvik"));
  }
}

TEST_F(HelperSystemTest, OnlyTheLockIsKept) {
  grantEverything();
  fs::create_directory("/home/norvik-user/folder");
  for (const char* path :
       {"/etc/passwd", "/etc/norvik/svr.cfg", "/home/norvik-user/folder", "/dev/null", "/tmp"}) {
    writeFile(kConfiguration, listWith("old"));
    EXPECT_EQ(call(Words{"hand", path} + asking("run", applyLine())), "/usr/sbin/nvkservice: not possible\n")
        << path;
  }
  EXPECT_TRUE(log_->says("refused: this is not the lock for changes"));
  EXPECT_EQ(contentOf("/run/tools"), "");
  EXPECT_EQ(call(Words{"hand", "/etc/norvik"} + asking("run", applyLine())),
            "/usr/sbin/nvkservice: launched\n");
}

TEST_F(HelperSystemTest, NoEndIsMissedHoweverSoonItComes) {
  grantEverything();
  writeFile(kConfiguration, listWith("old"));
  Words words;
  for (int i = 0; i < 100; ++i) words = words + asking("run", setConfigurationMode());
  const std::string output = call(words + Words{"ends"});
  EXPECT_FALSE(has(output, "some have not ended"));
  std::size_t ends = 0;
  for (std::size_t at = 0; (at = output.find("/bin/chmod: status 0\n", at)) != std::string::npos; ++at)
    ++ends;
  EXPECT_EQ(ends, 100U);
}

TEST_F(HelperSystemTest, AToolsStatusAndWordsAreTold) {
  grantEverything();
  writeFile("/run/tool-script", "echo ignored; printf '  caf\\351 is not UTF-8\\n' >&2; exit 7\n");
  EXPECT_EQ(call(asking("run", applyLine()) + Words{"ends"}),
            "/usr/sbin/nvkservice: launched\n/usr/sbin/nvkservice: status 7: caf\xe9 is not UTF-8\n");
  EXPECT_TRUE(log_->says("failed, status 7: caf\\xe9 is not UTF-8"));
  writeFile("/run/tool-script", "head -c 1000000 /dev/zero | tr '\\0' x >&2; kill -9 $$\n");
  EXPECT_EQ(
      call(asking("run", applyLine()) + Words{"ends"}),
      "/usr/sbin/nvkservice: launched\n/usr/sbin/nvkservice: signal 9: " + std::string(4096, 'x') + "\n");
  fs::remove("/usr/sbin/nvkservice");
  const std::string missing = call(asking("run", applyLine()) + Words{"ends"});
  EXPECT_TRUE(has(missing, "/usr/sbin/nvkservice: status 127: ")) << missing;
}

TEST_F(HelperSystemTest, AToolGetsNothingOfTheCallerOrTheHelper) {
  grantEverything();
  const ProgramResult result = runProgram(
      callerWords(asking("run", applyLine()) + Words{"ends"}),
      {.environment = {{"LD_PRELOAD_", "x"}, {"NORVIK_ROOT", "/tmp"}, {"IFS", "x"}}, .user = kUser});
  EXPECT_TRUE(has(result.output, "status 0")) << result.output << result.errors;
  EXPECT_EQ(contentOf("/run/tool-environment"), "PATH=/usr/sbin:/usr/bin:/sbin:/bin\n");
  EXPECT_EQ(contentOf("/run/tool-descriptors"), "0\n1\n2\n3\n");  // the last one is that of the listing
  EXPECT_EQ(contentOf("/run/tool-folder"), "/\n");
  writeFile("/run/tool-script",
            "input=$(readlink /proc/$$/fd/0); output=$(readlink /proc/$$/fd/1)\n"
            "echo $input $output >/run/tool-streams\n"
            "read -r a b c d e session rest </proc/$$/stat; [ $session = $$ ] || exit 9\n");
  EXPECT_TRUE(has(call(asking("run", applyLine()) + Words{"ends"}), "status 0"));
  EXPECT_EQ(contentOf("/run/tool-streams"), "/dev/null /dev/null\n");
}

TEST_F(HelperSystemTest, AToolHasTheUsualSignals) {
  grantEverything();
  for (const int signal : {SIGPIPE, SIGXFSZ, SIGHUP, SIGTERM, SIGINT}) {
    writeFile("/run/tool-script", "kill -" + std::to_string(signal) + " $$; exit 3\n");
    EXPECT_TRUE(has(call(asking("run", applyLine()) + Words{"ends"}),
                    "/usr/sbin/nvkservice: signal " + std::to_string(signal)))
        << signal;
  }
}

TEST_F(HelperSystemTest, OtherPeoplesFilesAndMountsAtTheTemporaryPathAreRefused) {
  grantEverything();
  const auto refusal = [&] { return call(asking("run", moveConfiguration()) + Words{"ends"}); };
  putFileOf(kAdmin, kTemporaryList, listWith("new"));
  EXPECT_TRUE(has(refusal(), "belongs to somebody else"));
  fs::remove(kTemporaryList);
  putFileOf(kUser, "/home/norvik-user/own", listWith("new"));
  fs::create_symlink("/home/norvik-user/own", kTemporaryList);
  EXPECT_TRUE(has(refusal(), "is a symbolic link"));
  fs::remove(kTemporaryList);
  putFileOf(kUser, kTemporaryList, listWith("new"));
  ASSERT_EQ(::mount("/home/norvik-user/own", kTemporaryList, nullptr, MS_BIND, nullptr), 0);
  EXPECT_TRUE(has(refusal(), "is on another file system"));
  ASSERT_EQ(::umount(kTemporaryList), 0);
  EXPECT_FALSE(fs::exists(kConfiguration));
  EXPECT_TRUE(has(refusal(), "/bin/mv: status 0"));
}

TEST_F(HelperSystemTest, AFullDiskLeavesTheOldFile) {
  grantEverything();
  ASSERT_EQ(::mount("small", "/etc/norvik", "tmpfs", 0, "size=64k,mode=755"), 0);
  writeFile(kConfiguration, listWith("old"));
  putFileOf(kUser, kTemporaryList, listWith(std::string(100'000, 'n')));
  EXPECT_TRUE(has(call(asking("run", moveConfiguration()) + Words{"ends"}), "No space left on device"));
  EXPECT_EQ(contentOf(kConfiguration), listWith("old"));
  EXPECT_EQ(std::distance(fs::directory_iterator("/etc/norvik"), fs::directory_iterator()), 1);
}

// What anybody may send.

// In KiB, since it was started.
std::size_t mostMemoryOf(const std::string& process) {
  const std::string status = contentOf("/proc/" + process + "/status");
  const std::size_t at = status.find("VmHWM:");
  return at == std::string::npos ? 0 : std::stoul(status.substr(at + 6));
}

TEST_F(HelperSystemTest, LongCallsAreNotKept) {
  constexpr std::size_t kMostMemory = 64 * 1024;
  std::vector<std::unique_ptr<RunningProgram>> callers;
  for (int i = 0; i < 4; ++i)
    callers.push_back(std::make_unique<RunningProgram>(callerWords({"flood", "12", "2000000"}),
                                                       ProgramOptions{.user = kUser}));
  for (auto& caller : callers) EXPECT_EQ(caller->status(), 0);
  // The bus may still have more for the helper than it keeps for anybody.
  EXPECT_TRUE(
      eventually([&] { return call(asking("run", applyLine())) == "/usr/sbin/nvkservice: refused\n"; }));
  EXPECT_GT(mostMemoryOf(helperProcess()), 0U);
  EXPECT_LT(mostMemoryOf(helperProcess()), kMostMemory);
}

TEST_F(HelperSystemTest, ManyShortCallsAreEachRefusedAndOthersAreServed) {
  grantEverything();
  // While the bus starts the helper it keeps no more than some hundred calls, of all callers together.
  EXPECT_TRUE(has(call(asking("run", applyLine()) + Words{"ends"}, kAdmin), "status 0"));
  RunningProgram flood(callerWords({"flood", "3000", "10"}), {.user = kUser});
  EXPECT_EQ(call(asking("run", applyLine()) + Words{"ends"}, kAdmin),
            "/usr/sbin/nvkservice: launched\n/usr/sbin/nvkservice: status 0\n");
  EXPECT_EQ(flood.status(), 0);
  EXPECT_TRUE(log_->says("refused: not a line of the tool command table"));
}

TEST_F(HelperSystemTest, ACallerThatHasGoneIsNotServed) {
  grantEverything();
  polkit_->send(SIGSTOP);
  RunningProgram caller(callerWords(asking("run", applyLine())), {.user = kUser});
  // The helper has taken the call when a later one, which needs nobody, has its reply.
  ASSERT_TRUE(eventually([] { return isOnBus(kHelperName); }));
  EXPECT_EQ(call({"run", "/bin/sh", "end"}), "/bin/sh: not possible\n");
  caller.send(SIGKILL);
  EXPECT_EQ(caller.ending()->signal, SIGKILL);
  polkit_->send(SIGCONT);
  EXPECT_TRUE(log_->says("\"/usr/sbin/nvkservice\" \"apply\": refused"));
  EXPECT_EQ(contentOf("/run/tools"), "");
}

TEST_F(HelperSystemTest, TheHelperHasAllDescriptorsThatThereAreAndToolsAsManyAsBefore) {
  rlimit limit{};
  ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &limit), 0);
  limit.rlim_cur = 200;
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
  polkit_.reset();
  bus_.reset();
  startBus();
  grantEverything();
  writeFile("/run/tool-script", "ulimit -Sn >/run/tool-limit\n");
  EXPECT_TRUE(has(call(asking("run", applyLine()) + Words{"ends"}), "status 0"));
  EXPECT_EQ(contentOf("/run/tool-limit"), "200\n");
  ASSERT_EQ(::prlimit(std::stoi(helperProcess()), RLIMIT_NOFILE, nullptr, &limit), 0);
  EXPECT_EQ(limit.rlim_cur, limit.rlim_max);
}

// Asking a person. The password is typed at a terminal, to polkit's own agent.

struct PasswordTest : HelperSystemTest {
  void SetUp() override {
    HelperSystemTest::SetUp();
    if (IsSkipped()) return;
    writeFile(kConfiguration, listWith("old"));
    openSession("active");
  }
};

TEST_F(PasswordTest, TheRightPasswordUnlocksUntilTheLockIsClosed) {
  TerminalDialog terminal(
      callerWords(Words{"unlock", "check"} + asking("run", setConfigurationMode()) + Words{"lock", "check"}),
      kUser);
  ASSERT_TRUE(terminal.shows("Authentication is required to unlock the settings of the Norvik"));
  ASSERT_TRUE(terminal.shows("Password:"));
  terminal.typeSecret("right");
  ASSERT_TRUE(terminal.shows("unlock: granted\n"));
  EXPECT_TRUE(terminal.shows("check: granted\n"));
  EXPECT_TRUE(terminal.shows("/bin/chmod: launched\n"));
  EXPECT_TRUE(terminal.shows("lock: done\n"));
  EXPECT_TRUE(terminal.shows("check: refused\n")) << terminal.rest();
}

TEST_F(PasswordTest, InADesktopTheSessionsAgentIsAskedAndLockingRevokes) {
  RunningProgram agent({builtProgram("session_agent"), "right"}, {.user = kUser}, "/tmp/agent");
  ASSERT_TRUE(eventually([] { return contentOf("/tmp/agent") == "ready\n"; })) << contentOf("/tmp/agent");
  EXPECT_EQ(call(Words{"check", "unlock", "check"} + asking("run", setConfigurationMode()) +
                 Words{"lock", "check"} + asking("run", setConfigurationMode()) + Words{"unlock"} +
                 asking("run", setConfigurationMode())),
            "check: refused\nunlock: granted\ncheck: granted\n/bin/chmod: launched\nlock: done\n"
            "check: refused\n/bin/chmod: refused\nunlock: granted\n/bin/chmod: launched\n");
  // Another program of the same person gets nothing of it.
  EXPECT_EQ(call(Words{"check"} + asking("run", setConfigurationMode())),
            "check: refused\n/bin/chmod: refused\n");
  const std::string asked = contentOf("/tmp/agent");
  EXPECT_EQ(std::count(asked.begin(), asked.end(), '\n'), 3) << asked;  // ready, and asked twice
}

TEST_F(PasswordTest, ACancelledRequestIsRefused) {
  TerminalDialog terminal(callerWords(Words{"unlock", "check"} + asking("run", setConfigurationMode())),
                          kUser);
  ASSERT_TRUE(terminal.shows("Password:"));
  // This computer has one, and no other processes than its own.
  ASSERT_TRUE(eventually([] { return ::system("pkill -x pkttyagent") == 0; }));
  EXPECT_TRUE(terminal.shows("unlock: ")) << terminal.rest();
  EXPECT_FALSE(has(terminal.rest(), "granted"));
}

TEST_F(PasswordTest, AWrongPasswordIsRefused) {
  TerminalDialog terminal(callerWords(Words{"unlock", "check"} + asking("run", setConfigurationMode())),
                          kUser);
  ASSERT_TRUE(terminal.shows("Password:"));
  terminal.typeSecret("wrong");
  ASSERT_TRUE(terminal.shows("unlock: ")) << terminal.rest();
  const std::string rest = terminal.rest();
  EXPECT_FALSE(has(rest, "unlock: granted")) << rest;
  EXPECT_TRUE(has(rest, "check: refused")) << rest;
  EXPECT_TRUE(has(rest, "/bin/chmod: refused")) << rest;
}

TEST_F(PasswordTest, WithoutATerminalOrAnAgentNobodyIsAsked) {
  EXPECT_EQ(call({"unlock"}), "unlock: no agent\n");
}

TEST_F(PasswordTest, PolkitKilledTakesTheRightsAway) {
  TerminalDialog terminal(callerWords(Words{"unlock", "touch", "/tmp/one", "await", "/tmp/two", "check"} +
                                      asking("run", setConfigurationMode())),
                          kUser);
  ASSERT_TRUE(terminal.shows("Password:"));
  terminal.typeSecret("right");
  ASSERT_TRUE(terminal.shows("unlock: granted\n"));
  ASSERT_TRUE(eventually([] { return fs::exists("/tmp/one"); }));
  startPolkit();  // another one, which knows nothing
  writeFile("/tmp/two", "");
  EXPECT_TRUE(terminal.shows("check: refused\n")) << terminal.rest();
  EXPECT_TRUE(terminal.shows("/bin/chmod: refused\n")) << terminal.rest();
}

// In a session that is not the person's own nothing is kept: polkit asks about every line that may ask.
TEST_F(PasswordTest, WithoutKeepingEachLineAsks) {
  openSession("inactive");
  TerminalDialog terminal(callerWords(Words{"unlock", "check"} + asking("ask", setConfigurationMode())),
                          kUser);
  ASSERT_TRUE(terminal.shows("Password:"));
  terminal.typeSecret("right");
  ASSERT_TRUE(terminal.shows("unlock: granted\n"));
  EXPECT_TRUE(terminal.shows("check: refused\n"));
  ASSERT_TRUE(terminal.shows("Authentication is required to save the settings of the Norvik"))
      << terminal.rest();
  ASSERT_TRUE(terminal.shows("Password:"));
  terminal.typeSecret("right");
  EXPECT_TRUE(terminal.shows("/bin/chmod: launched\n")) << terminal.rest();
}

// The command line on the whole system: real files, the real bus, the real polkit.

struct CommandLineTest : PasswordTest {
  const std::string norvikctl_ = builtProgram("norvikctl");
  // The arguments and the files that the server's tool gets.
  static constexpr const char* kToolScript = "cp /etc/norvik/svr.cfg /run/applied\n";

  void SetUp() override {
    PasswordTest::SetUp();
    if (IsSkipped()) return;
    fs::remove(kConfiguration);
    writeFile("/run/tool-script", kToolScript);
  }
  static int64_t portIn(const std::string& path) {
    const auto list = decodePropertyList(contentOf(path));
    const PropertyList* service = list ? list->find("NVKService") : nullptr;
    return integerValue(service != nullptr ? service->find("PortNumber") : nullptr);
  }
  static std::size_t temporaryFiles() {
    return static_cast<std::size_t>(std::count_if(
        fs::directory_iterator("/tmp"), fs::directory_iterator(),
        [](const auto& entry) { return entry.path().filename().native().rfind("norvik.prefs", 0) == 0; }));
  }
};

TEST_F(CommandLineTest, APersonSavesAPortWithAPassword) {
  TerminalDialog terminal({norvikctl_, "set", "nvk.port=5073"}, kUser);
  ASSERT_TRUE(terminal.shows("Password:")) << terminal.rest();
  terminal.typeSecret("right");
  const std::string shown = terminal.rest();
  EXPECT_EQ(portIn(kConfiguration), 5073) << shown;
  EXPECT_EQ(portIn("/run/applied"), 5073) << shown;
  EXPECT_FALSE(has(shown, "Password:", shown.find("Password:") + 1)) << shown;  // asked once
  EXPECT_EQ(temporaryFiles(), 0U);
}

TEST_F(CommandLineTest, AWrongPasswordSavesNothingAndSaysWhy) {
  TerminalDialog terminal({norvikctl_, "set", "nvk.port=5073"}, kUser);
  ASSERT_TRUE(terminal.shows("Password:")) << terminal.rest();
  terminal.typeSecret("wrong");
  const std::string shown = terminal.rest();
  EXPECT_TRUE(has(shown, "his needs administrator rights")) << shown;
  EXPECT_TRUE(has(shown, "The password was wrong")) << shown;
  EXPECT_FALSE(fs::exists(kConfiguration));
}

TEST_F(CommandLineTest, WithoutATerminalItSaysThatNobodyCouldBeAsked) {
  const ProgramResult result = runProgram({norvikctl_, "set", "nvk.port=5073"}, {.user = kUser});
  EXPECT_EQ(result.status, 77);
  EXPECT_TRUE(has(result.errors, "Nobody could be asked for a password")) << result.errors;
}

TEST_F(CommandLineTest, TheSuperUserNeedsNeitherBusNorPolkit) {
  polkit_.reset();
  bus_.reset();
  const ProgramResult result = runProgram({norvikctl_, "set", "nvk.port=5074"});
  EXPECT_EQ(result.status, 0) << result.output << result.errors;
  EXPECT_EQ(portIn(kConfiguration), 5074);
  EXPECT_EQ(portIn("/run/applied"), 5074);
  EXPECT_EQ(temporaryFiles(), 0U);
  EXPECT_TRUE(log_->says("uid 0 (directly): \"/usr/sbin/nvkservice\" \"apply\": started"));
}

TEST_F(CommandLineTest, SettingsThatNothingHereReadsSaySo) {
  const std::string sentence = "Nothing on this computer reads this setting";
  EXPECT_TRUE(has(runProgram({norvikctl_, "show", "system.compositing.disable"}).output, sentence));
  EXPECT_TRUE(has(runProgram({norvikctl_, "limits"}).output, sentence));
  EXPECT_TRUE(has(runProgram({norvikctl_, "limits", "--json"}).output, sentence));
  EXPECT_TRUE(has(runProgram({norvikctl_, "show", "system.screensaver.disable", "--json"}).output,
                  "\"unread\": true"));
  EXPECT_FALSE(has(runProgram({norvikctl_, "show", "nvk.port"}).output, sentence));
  EXPECT_FALSE(has(runProgram({norvikctl_, "show", "nvk.port", "--json"}).output, "unread"));
}

TEST_F(CommandLineTest, WhatAToolSaysReachesThePerson) {
  writeFile("/run/tool-script", "echo out of order >&2; exit 3\n");
  TerminalDialog terminal({norvikctl_, "set", "nvk.port=5073"}, kUser);
  ASSERT_TRUE(terminal.shows("Password:")) << terminal.rest();
  terminal.typeSecret("right");
  const std::string shown = terminal.rest();
  EXPECT_TRUE(has(shown, "failed with exit status 3: out of order")) << shown;
}

// The program itself.

struct HelperProgramTest : HelperSystemTest {
  const std::string helper_ = kHelperProgram;
};

TEST_F(HelperProgramTest, OnlyTheSuperUserRunsIt) {
  EXPECT_EQ(runProgram({helper_}, {.user = kUser}).status, 77);
  EXPECT_EQ(runProgram({helper_, "--line", "/usr/sbin/nvkservice", "apply"}, {.user = kUser}).status, 77);
  fs::copy_file(helper_, "/tmp/helper");
  ::chmod("/tmp/helper", 04755);
  EXPECT_EQ(runProgram({"/tmp/helper", "--line", "/usr/sbin/nvkservice", "apply"}, {.user = kUser}).status,
            77);
  EXPECT_EQ(contentOf("/run/tools"), "");
}

TEST_F(HelperProgramTest, ItWorksDirectlyForTheSuperUser) {
  writeFile(kTemporaryList, listWith("new"));
  EXPECT_EQ(runProgram(Words{helper_, "--line"} + moveConfiguration()).status, 0);
  EXPECT_EQ(contentOf(kConfiguration), listWith("new"));
  const ProgramResult value =
      runProgram({helper_, "--line", "/usr/sbin/sysctl", "-n", "kern.maxfilesperproc"});
  EXPECT_EQ(value.output, contentOf("/proc/sys/fs/nr_open"));
  const ProgramResult failed = runProgram(Words{helper_, "--line"} + moveConfiguration());
  EXPECT_EQ(failed.status, 1);
  EXPECT_EQ(failed.errors, std::string(kTemporaryList) + ": No such file or directory\n");
  writeFile("/run/tool-script", "exit 5\n");
  EXPECT_EQ(runProgram(Words{helper_, "--line"} + applyLine()).status, 5);
  EXPECT_EQ(runProgram({helper_, "--line", "/bin/sh", "-c", "id"}).status, 64);
  EXPECT_EQ(runProgram({helper_, "--other"}).status, 64);
  EXPECT_EQ(runProgram({helper_, "--line"}).status, 64);
}

TEST_F(HelperProgramTest, ItsSurroundingsAreNotReliedOn) {
  putFileOf(0, kTemporaryList, listWith("new"));
  // Closed descriptors: whatever is opened must not become a standard stream that words are written to.
  EXPECT_EQ(runProgram({"/bin/sh", "-c",
                        "exec " + helper_ + " --line /bin/mv -f " + kTemporaryList + " " + kConfiguration +
                            " <&- >&- 2>&-"})
                .status,
            0);
  EXPECT_EQ(contentOf(kConfiguration), listWith("new"));
  // Signals that are ignored or blocked, limits, a mask, a folder that is gone, and an environment.
  const std::string hostile =
      "mkdir /tmp/gone; cd /tmp/gone; rmdir /tmp/gone; umask 777; trap '' CHLD TERM PIPE; ulimit -n 20; exec 9>/tmp/nine; "
      "exec env PATH=/tmp IFS=/ NORVIK_ROOT=/tmp DBUS_SYSTEM_BUS_ADDRESS=unix:path=/tmp/none BASH_ENV=/tmp/x ";
  EXPECT_EQ(runProgram({"/bin/sh", "-c", hostile + helper_ + " --line /usr/sbin/nvkservice apply"}).status,
            0);
  EXPECT_EQ(contentOf("/run/tool-environment"), "PATH=/usr/sbin:/usr/bin:/sbin:/bin\n");
  EXPECT_EQ(contentOf("/run/tool-descriptors"), "0\n1\n2\n3\n");
  EXPECT_EQ(contentOf("/run/tool-folder"), "/\n");
}

// Older systems start a program without even its name; newer ones give it an empty one.
TEST_F(HelperProgramTest, WithoutAnyWordItDoesNothingUnusual) {
  bus_.reset();
  const pid_t child = ::fork();
  if (child == 0) {
    char* const none[] = {nullptr};
    ::execve(helper_.c_str(), none, none);
    ::_exit(0);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_TRUE(WEXITSTATUS(status) == 64 || WEXITSTATUS(status) == 69) << WEXITSTATUS(status);
}

// The service in this process, with a short patience.

struct ServiceTest : HelperSystemTest {
  sd_bus* bus = nullptr;
  sd_event* event = nullptr;
  void SetUp() override {
    HelperSystemTest::SetUp();
    if (IsSkipped()) return;
    sigset_t children;
    sigemptyset(&children);
    sigaddset(&children, SIGCHLD);
    ::sigprocmask(SIG_BLOCK, &children, nullptr);
    ASSERT_GE(sd_bus_open_system(&bus), 0);
    ASSERT_GE(sd_event_new(&event), 0);
    ASSERT_GE(sd_bus_attach_event(bus, event, SD_EVENT_PRIORITY_NORMAL), 0);
  }
  void TearDown() override {
    sd_bus_flush_close_unref(bus);
    sd_event_unref(event);
  }
};

TEST_F(ServiceTest, ItEndsByItselfWithoutWork) {
  Service service(bus, event, Computer(), std::chrono::milliseconds(50));
  ASSERT_TRUE(service.start());
  EXPECT_TRUE(isOnBus(kHelperName));
  EXPECT_EQ(sd_event_loop(event), 0);
  EXPECT_FALSE(isOnBus(kHelperName));
}

TEST_F(ServiceTest, ItDoesNotEndBeforeItsWork) {
  grantEverything();
  writeFile("/run/tool-script", "touch /tmp/begun; while [ ! -e /tmp/go ]; do sleep 0.01; done\n");
  Service service(bus, event, Computer(), std::chrono::milliseconds(50));
  ASSERT_TRUE(service.start());
  RunningProgram caller(callerWords(asking("run", applyLine()) + Words{"ends"}), {.user = kUser},
                        "/tmp/caller");
  while (!fs::exists("/tmp/begun")) ASSERT_GE(sd_event_run(event, 10'000), 0);
  service.finish();
  for (int i = 0; i < 20; ++i) ASSERT_GE(sd_event_run(event, 10'000), 0);
  EXPECT_NE(sd_event_get_state(event), SD_EVENT_FINISHED);
  writeFile("/tmp/go", "");
  EXPECT_EQ(sd_event_loop(event), 0);
  EXPECT_EQ(caller.status(), 0);
  EXPECT_EQ(contentOf("/tmp/caller"), "/usr/sbin/nvkservice: launched\n/usr/sbin/nvkservice: status 0\n");
}

TEST_F(ServiceTest, TheLinesOfOneUserAreLimited) {
  polkit_->send(SIGSTOP);  // nobody answers
  Service service(bus, event, Computer(), std::chrono::seconds(5));
  ASSERT_TRUE(service.start());
  std::vector<std::unique_ptr<RunningProgram>> callers;
  for (int i = 0; i < 34; ++i)
    callers.push_back(std::make_unique<RunningProgram>(callerWords(asking("run", applyLine())),
                                                       ProgramOptions{.user = kUser}));
  // Somebody else's line is none of them.
  callers.push_back(std::make_unique<RunningProgram>(callerWords(asking("run", applyLine())),
                                                     ProgramOptions{.user = kAdmin}));
  for (int i = 0; i < 1000 && !has(log_->ofHelper(), "refused: too many lines"); ++i)
    sd_event_run(event, 10'000);
  const auto ended = [&] {
    return std::count_if(callers.begin(), callers.end(), [](auto& caller) {
      return caller->ending(std::chrono::milliseconds(50)).has_value();
    });
  };
  EXPECT_EQ(ended(), 2);
  polkit_->send(SIGCONT);
}

}  // namespace
}  // namespace norvik::helper
