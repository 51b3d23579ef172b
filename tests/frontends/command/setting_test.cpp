// norvikctl set: edits that reach the files and the programs that read them, and edits that are refused.
#include <gtest/gtest.h>

#include "src/adapters/property_lists/codec.h"
#include "tests/frontends/command/sandbox_run.h"

namespace norvik::command {
namespace {

class SettingTest : public testing::Test {
 protected:
  // Refused with this status and this text, and nothing changed.
  void expectRefused(const Words& words, int status, const std::string& sentence) const {
    const auto before = box.files();
    const Result result = box.run(words);
    EXPECT_EQ(result.status, status) << result.out;
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find(sentence), std::string::npos) << result.err;
    EXPECT_EQ(box.files(), before);
  }
  int64_t number(const char* file, const char* key) const { return integerValue(box.list(file).find(key)); }
  int64_t port(const char* service) const {
    const PropertyList server = box.list(kServerFile);
    return integerValue(server.find(service)->find("PortNumber"));
  }

  SandboxRun box;
};

TEST_F(SettingTest, AUserSettingReachesTheFileAndTheAgent) {
  const Result result = box.run({"set", "user.image.depth=7", "user.image.defaults=no"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out.substr(0, result.out.find("Told")),
            "user.image.defaults  on -> off\n"
            "user.image.depth     6 -> 7\n\n"
            "Saved  user settings\n");
  EXPECT_EQ(number(kAgentFile, "ImageColorDepth"), 7);
  EXPECT_TRUE(eventually([&] { return box.log("agent.log", "SIGUSR2: ImageUseDefaults=false"); }));
}

TEST_F(SettingTest, ACustomPortTurnsOnItsBoxAndReachesTheRunningServer) {
  const int first = freePort(), second = freePort(), rdp = freePort();
  ASSERT_EQ(box.run({"set", "nvk.port=" + std::to_string(first), "rdp.port=" + std::to_string(rdp)}).status,
            0);
  ASSERT_EQ(box.run({"start"}).status, 0);
  EXPECT_TRUE(connects(first));
  ASSERT_EQ(box.run({"set", "nvk.port=" + std::to_string(second)}).status, 0);
  EXPECT_EQ(port("NVKService"), second);
  EXPECT_TRUE(eventually([&] { return connects(second) && !connects(first); }));
  EXPECT_EQ(box.run({"get", "nvk.port.custom"}).out, "on\n");
}

TEST_F(SettingTest, ShowsTheCommandsThatRan) {
  const auto outcome = box.json({"set", "nvk.port=5000"});
  EXPECT_EQ(outcome["saved"], nlohmann::json({"server settings"}));
  EXPECT_EQ(outcome["changes"][0]["name"], "nvk.port.custom");
  EXPECT_EQ(outcome["changes"][0]["because"], "needed by nvk.port");
  EXPECT_EQ(outcome["changes"][1], nlohmann::json({{"name", "nvk.port"},
                                                   {"label", "Port number"},
                                                   {"page", "Norvik clients"},
                                                   {"from", 4073},
                                                   {"to", 5000},
                                                   {"because", nullptr}}));
  ASSERT_EQ(outcome["commands"].size(), 4U);
  EXPECT_EQ(outcome["commands"][0]["command"][0], "/bin/mv");
  EXPECT_EQ(outcome["commands"][1]["command"], nlohmann::json({"/bin/chmod", "644", "/etc/norvik/svr.cfg"}));
  EXPECT_EQ(outcome["commands"][2]["command"],
            nlohmann::json({"/usr/sbin/chown", "root", "/etc/norvik/svr.cfg"}));
  EXPECT_EQ(outcome["commands"][3]["command"], nlohmann::json({"/usr/sbin/nvkservice", "apply"}));
  EXPECT_EQ(outcome["pending"], nlohmann::json::array());
}

TEST_F(SettingTest, KeysOfOthersSurvive) {
  ASSERT_EQ(box.run({"set", "nvk.sound=off"}).status, 0);
  EXPECT_EQ(*box.list(kServerFile).find("LicenseHolder")->as<std::string>(), "Sandbox");
}

// The pane does not move this slider when it loads, and saves its position.
TEST_F(SettingTest, ShowsWhatElseIsSavedBecauseTheFileHoldsAnotherValue) {
  PropertyList server = box.list(kServerFile);
  server.as<PropertyList::Dictionary>()->insert_or_assign("ImageCaptBuffer", int64_t{5});
  box.write(kServerFile, encodeXmlPropertyList(server));
  const Result result = box.run({"set", "nvk.sound=off"});
  EXPECT_EQ(
      result.out.substr(0, result.out.find("\n\n")),
      "nvk.sound     on -> off\nimage.buffer  5 -> 3     (the file holds a value that the control cannot show)");
  EXPECT_EQ(number(kServerFile, "ImageCaptBuffer"), 3);
}

TEST_F(SettingTest, ANotificationSettingReachesTheMenuAgent) {
  const Result result = box.run({"set", "notify.news=off", "notify.repeat=15-minutes"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_NE(result.out.find("Saved  notification settings\nTold   the menu agent\n"), std::string::npos)
      << result.out;
  EXPECT_EQ(number(kMenuAgentFile, "NvkNotificationRepeatTimeout"), 1);
  EXPECT_TRUE(
      eventually([&] { return box.log("menua.log", "Notification: NvkNotificationShowNews=false"); }));
}

TEST_F(SettingTest, EveryGroupInOneCommand) {
  const auto outcome = box.json({"set", "notify.low=off", "user.mouse.swap=on", "rdp.clipboard=off"});
  EXPECT_EQ(outcome["saved"], nlohmann::json({"user settings", "server settings", "notification settings"}));
  // The server's command reaches the agents too.
  EXPECT_EQ(outcome["told"], nlohmann::json({"the server", "the menu agent"}));
}

TEST_F(SettingTest, ValuesOfEveryKindInEveryForm) {
  ASSERT_EQ(box.run({"set", "nvk.sound=NO", "nvk.printing=false", "nvk.clipboard=0", "image.quality=low",
                     "notify.close=4", "connect.action=hidden", "image.shadow=72"})
                .status,
            0);
  EXPECT_EQ(box.run({"get", "nvk.sound", "nvk.printing", "nvk.clipboard", "image.quality", "notify.close",
                     "connect.action", "image.shadow"})
                .out,
            "off\noff\noff\nLow\n5 minutes\nhidden\n72\n");
}

TEST_F(SettingTest, TheOrderOfTheWordsDoesNotMatter) {
  ASSERT_EQ(box.run({"--answer", "limits=no", "set", "system.wake=off", "connect.action=hidden",
                     "connect.multiuser=on"})
                .status,
            0);
  EXPECT_EQ(box.run({"get", "connect.multiuser", "connect.act", "connect.action", "system.wake",
                     "system.screensaver.disable"})
                .out,
            "on\non\nhidden\noff\non\n");
}

TEST_F(SettingTest, AValueThatIsAlreadySetIsNotSaved) {
  const auto before = box.files();
  EXPECT_NE(box.run({"set", "nvk.sound=on"}).out.find("There was nothing to save."), std::string::npos);
  EXPECT_EQ(box.run({"get", "nvk.port"}).out, "4073\n");
  EXPECT_EQ(before, box.files());
}

TEST_F(SettingTest, AValueOfAnotherKindOrOutOfRange) {
  expectRefused({"set", "nvk.port=abc"}, 65, "nvk.port takes a whole number from 1 to 65535, not \"abc\".");
  expectRefused({"set", "nvk.port=0"}, 65, "nvk.port takes a whole number from 1 to 65535, not \"0\".");
  expectRefused({"set", "rdp.port=65536"}, 65,
                "rdp.port takes a whole number from 1 to 65535, not \"65536\".");
  expectRefused({"set", "nvk.port=-1"}, 65, "not \"-1\".");
  expectRefused({"set", "image.depth=9"}, 65, "image.depth takes a whole number from 4 to 8, not \"9\".");
  expectRefused({"set", "image.depth=5.5"}, 65, "not \"5.5\".");
  expectRefused({"set", "nvk.sound=loud"}, 65, "nvk.sound takes on or off, not \"loud\".");
  expectRefused({"set", "image.quality=4"}, 65, "image.quality takes Low, Medium or High, not \"4\".");
  expectRefused({"set", "connect.action=lok"}, 65,
                "connect.action takes console, lock or hidden, not \"lok\".");
  expectRefused({"set", "nvk.port="}, 65, "not \"\".");
}

TEST_F(SettingTest, OneBadValueHoldsBackTheGoodOnes) {
  expectRefused({"set", "user.mouse.swap=on", "nvk.port=70000"}, 65, "nvk.port takes");
}

TEST_F(SettingTest, TheTwoServicesNeedDifferentPorts) {
  expectRefused({"set", "nvk.port=3389"}, 65, "Port 3389 is already the port for RDP clients");
  expectRefused({"set", "nvk.port=5000", "rdp.port=5000"}, 65, "Port 5000 is already the port for");
  ASSERT_EQ(box.run({"set", "nvk.port=3389", "rdp.port=4073"}).status, 0);
  expectRefused({"set", "nvk.port.custom=off"}, 65, "Port 4073 is already the port for RDP clients");
}

TEST_F(SettingTest, APortThatAnotherProgramUsesIsAWarning) {
  const Listener other;
  const Result result = box.run({"set", "nvk.port=" + std::to_string(other.port())});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err,
            "norvikctl: warning: Port " + std::to_string(other.port()) +
                " is in use by another program; clients cannot connect to it until that program releases "
                "it.\n");
}

TEST_F(SettingTest, WhatCannotBeEditedIsRefusedWithTheReason) {
  expectRefused({"set", "user.image.depth=7"}, 78,
                "user.image.depth cannot be set to 7 now: it needs user.image.defaults=off.");
  ASSERT_EQ(box.run({"set", "nvk.enabled=off"}).status, 0);
  expectRefused({"set", "nvk.port=5000"}, 78,
                "nvk.port.custom cannot be set to on now: it needs nvk.enabled=on.");
  expectRefused({"set", "rdp.clipboard=off"}, 78, "it needs nvk.enabled=on.");
  ASSERT_EQ(box.run({"--answer", "limits=no", "set", "connect.multiuser=on"}).status, 0);
  expectRefused({"set", "connect.action=lock"}, 78, "it needs connect.multiuser=off.");
}

TEST_F(SettingTest, WordsThatContradictOneAnother) {
  expectRefused({"set", "nvk.port=5000", "nvk.port.custom=off"}, 64, "nvk.port needs nvk.port.custom=on.");
  expectRefused({"set", "nvk.sound=on", "nvk.sound=off"}, 64, "nvk.sound is given twice.");
  expectRefused({"set", "nvk.sound"}, 64, "nvk.sound has no value; write nvk.sound=VALUE.");
}

TEST_F(SettingTest, ADryRunChangesNothing) {
  box.write("/.norvik/authorization", "refused\n");
  const auto before = box.files();
  const std::string service = box.read("/.norvik/log/service.log"),
                    tools = box.read("/.norvik/log/tools.log");
  const Result result = box.run({"set", "nvk.port=5000", "user.mouse.swap=on", "--dry-run"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out.substr(0, 34), "A dry run: nothing is changed.\n\nus");
  EXPECT_NE(result.out.find("nvk.port         4073 -> 5000\n"), std::string::npos) << result.out;
  EXPECT_NE(result.out.find("Would save   user settings\n             server settings\n"), std::string::npos);
  EXPECT_NE(result.out.find("/usr/sbin/nvkservice apply\n"), std::string::npos);
  EXPECT_EQ(box.files(), before);
  EXPECT_EQ(box.read("/.norvik/log/service.log"), service);
  EXPECT_EQ(box.read("/.norvik/log/tools.log"), tools);
  EXPECT_FALSE(box.log("agent.log", "SIGUSR2"));
}

TEST_F(SettingTest, ADryRunFindsTheSameFaults) {
  expectRefused({"set", "nvk.port=70000", "--dry-run"}, 65, "nvk.port takes");
  expectRefused({"set", "nvk.port=3389", "--dry-run"}, 65, "already the port for RDP clients");
  expectRefused({"set", "user.image.depth=7", "--dry-run"}, 78, "needs user.image.defaults=off");
}

}  // namespace
}  // namespace norvik::command
