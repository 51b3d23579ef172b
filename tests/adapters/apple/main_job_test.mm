// The whole main job of the pane on the Mac's adapter: what the system is asked, in which order and with
// which arguments, from the pane's start to its end.
#include <gtest/gtest.h>

#include "src/server/mac/pane/pane.h"
#include "tests/adapters/apple/apple_under_test.h"
#include "tests/support/shipped_interface.h"

namespace norvik {
namespace {

using Calls = std::vector<std::string>;

// Waits pass on the doubles' clock, and the tools that were launched have ended after each of a second.
class PassingTime : public PosixProcesses {
 public:
  PassingTime(PosixProcesses& computer, LaunchedTools& tools) : computer_(computer), tools_(tools) {}

  KillResult kill(int32_t pid, Signal signal) override { return computer_.kill(pid, signal); }
  int32_t getpid() override { return 812; }
  void usleep(uint32_t microseconds) override {
    doubles::mac().seconds += microseconds / 1e6;
    const bool isLong = microseconds >= 1'000'000;
    EXPECT_TRUE(!isLong || tools_.wait(std::chrono::seconds(10)));
  }

 private:
  PosixProcesses& computer_;
  LaunchedTools& tools_;
};

class InApplicationMainJob : public testing::Test {
 protected:
  InApplicationMainJob()
      : time(mac.computer().posix, tools()),
        own(mac.computer().platform()),
        platform{
            own.application,   own.alerts,  own.workspace,     own.notifications,  own.drawing, own.runLoop,
            own.authorization, own.files,   own.propertyLists, own.processManager, time,        own.host,
            own.systemVersion, own.bundles, own.log,           own.assertions} {
    installPlatform(&platform);
    mac.makeDirectory("/etc/norvik");
    mac.makeDirectory("/var/run");
    mac.makeDirectory("/Library/Preferences");
    daemon = mac.startOutsideOfBundles();
    const std::string pidFile = "$NORVIK_ROOT/var/run/nvkserverd.pid";
    mac.folder().putScript("/usr/sbin/nvkservice", "case $1 in start) echo " + std::to_string(daemon) +
                                                       " > " + pidFile + ";; stop) rm " + pidFile +
                                                       ";; esac");
    mac.folder().putScript("/usr/sbin/sysctl", "echo 12288");
    mac.folder().putScript("/usr/sbin/chown", "");
    doubles::mac().records = true;
  }
  ~InApplicationMainJob() override {
    pane.reset();
    installPlatform(nullptr);
  }

  LaunchedTools& tools() { return mac.interfaces().services.tools; }
  // What the system was asked since the last call, when the tools have ended.
  Calls calls() {
    EXPECT_TRUE(tools().wait(std::chrono::seconds(10)));
    return std::exchange(doubles::mac().calls, {});
  }
  // The same, without the passes of the run loop.
  Calls callsBetweenPasses() {
    Calls all = calls();
    std::erase(all, "CFRunLoopRunInMode");
    return all;
  }
  void click(Control& control) { pane->buttonClicked(control); }

  AppleUnderTest mac;
  PassingTime time;
  Platform own;
  Platform platform;
  int32_t daemon = 0;
  InterfaceDescription interface = shippedInterface();
  std::unique_ptr<NVKServerPrefs> pane = std::make_unique<NVKServerPrefs>(interface);
};

constexpr const char* kRights =
    "AuthorizationCopyRights system.privilege.admin=/usr/sbin/nvkservice system.privilege.admin=/bin/mv "
    "system.privilege.admin=/bin/chmod system.privilege.admin=/usr/sbin/chown flags: ";
constexpr const char* kExecute = "AuthorizationExecuteWithPrivileges ";

std::string rights(int flags) {
  return kRights + std::to_string(flags);
}

std::string execute(const std::string& line) {
  return kExecute + line;
}

TEST_F(InApplicationMainJob, AsksTheSystemWhatTheRulesSay) {
  const Calls kernelValues{execute("/usr/sbin/sysctl -n kern.maxfiles | pipe"),
                           execute("/usr/sbin/sysctl -n kern.maxfilesperproc | pipe")};
  // Awake: nobody is asked, so that the pane stays locked.
  pane->awakeFromNib();
  EXPECT_EQ(calls(), (Calls{"AuthorizationCreate rights: flags: 0", rights(2), "AuthorizationFree flags: 8",
                            "CFRunLoopTimerCreate 0.000000 0.250000", "CFRunLoopAddTimer"}));
  // Unlock.
  click(pane->ib_button_Auth);
  Calls unlocked{"AuthorizationCreate rights: flags: 0", rights(3)};
  unlocked.insert(unlocked.end(), kernelValues.begin(), kernelValues.end());
  EXPECT_EQ(calls(), unlocked);
  EXPECT_EQ(doubles::mac().passwordsAsked, 1);
  // A port of its own, and Apply.
  pane->ib_admin_chkbox_nvkPort.setState(1);
  click(pane->ib_admin_chkbox_nvkPort);
  pane->ib_admin_edbox_nvkPort.setStringValue("5073");
  EXPECT_EQ(calls(), Calls());
  click(pane->ib_button_Apply);
  const std::string temporary = "/tmp/norvik.prefs.tmp.server.conf.812";
  EXPECT_EQ(calls(), (Calls{execute("/bin/mv -f " + temporary + " /etc/norvik/svr.cfg"),
                            execute("/bin/chmod 644 /etc/norvik/svr.cfg"),
                            execute("/usr/sbin/chown root /etc/norvik/svr.cfg"),
                            execute("/usr/sbin/nvkservice apply")}));
  const auto saved = mac.computer().propertyLists.dictionaryWithContentsOfFile("/etc/norvik/svr.cfg");
  ASSERT_TRUE(saved);
  EXPECT_EQ(intValue(saved->find("NVKService")->find("PortNumber")), 5073);
  EXPECT_EQ(mac.bytesOf(temporary), std::nullopt);
  // Start.
  EXPECT_TRUE(pane->startServer());
  const Calls started = calls();
  // The passes come before the launch; the timer fires in the first, as its date has passed.
  ASSERT_EQ(started.size(), 22u);
  EXPECT_EQ(started.front(), "CFRunLoopRunInMode");
  EXPECT_EQ(started[1], "fire");
  EXPECT_EQ(std::count(started.begin(), started.end(), "CFRunLoopRunInMode"), 20);
  EXPECT_EQ(started.back(), execute("/usr/sbin/nvkservice start -f -w"));
  EXPECT_EQ(nvkd_pid(), daemon);
}

// Apply at the running server lets it read its file; a person who leaves is asked about what is pending.
TEST_F(InApplicationMainJob, AsksWhenSomebodyLeavesAndGivesUpEverythingAtTheEnd) {
  pane->awakeFromNib();
  click(pane->ib_button_Auth);
  ASSERT_TRUE(pane->startServer());
  calls();
  pane->ib_admin_chkbox_nvkPort.setState(1);
  pane->ib_admin_edbox_nvkPort.setStringValue("5074");
  doubles::mac().alertAnswers = {1001};
  pane->willUnselect();
  pane->didUnselect();
  EXPECT_EQ(callsBetweenPasses(),
            Calls{"runModal Norvik Server options changed|What do you want to do with changes you "
                  "made?|Apply Now|Discard Changes"});
  // Five minutes later the pane is locked when it is shown again, and nobody is asked.
  doubles::mac().seconds += 300;
  pane->willSelect();
  pane->didSelect();
  EXPECT_EQ(callsBetweenPasses(), (Calls{rights(2), "AuthorizationFree flags: 8"}));
  EXPECT_EQ(doubles::mac().passwordsAsked, 1);
  EXPECT_FALSE(pane->authorized());
  pane->destroy();
  EXPECT_EQ(callsBetweenPasses(), Calls{"CFRunLoopTimerInvalidate"});
}

TEST_F(InApplicationMainJob, GivesUpItsRightsAtTheEnd) {
  pane->awakeFromNib();
  click(pane->ib_button_Auth);
  calls();
  pane->destroy();
  EXPECT_EQ(calls(), (Calls{"CFRunLoopTimerInvalidate", "AuthorizationFree flags: 8"}));
}

}  // namespace
}  // namespace norvik
