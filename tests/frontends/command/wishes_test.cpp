// norvikctl set as a wish: what already holds is no change, what get prints is taken, and the order of the
// words and of the pages does not matter.
#include <gtest/gtest.h>

#include <sstream>

#include "tests/frontends/command/sandbox_run.h"

namespace norvik::command {
namespace {

class WishesTest : public testing::Test {
 protected:
  // The wish holds already: nothing is reported as changed, run or written.
  void expectNoChange(const Words& assignments) const {
    Words words{"set"};
    words.insert(words.end(), assignments.begin(), assignments.end());
    const auto before = box.files();
    const Result result = box.run(words);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out.find("->"), std::string::npos) << result.out;
    EXPECT_NE(result.out.find("There was nothing to save.\n"), std::string::npos) << result.out;
    const auto outcome = box.json(words);
    EXPECT_EQ(outcome["changed"], false) << outcome;
    EXPECT_EQ(outcome["changes"], nlohmann::json::array()) << outcome;
    EXPECT_EQ(box.files(), before);
  }
  Words settingNames() const {
    Words names;
    const auto shown = box.json({"show"});
    for (const auto& page : shown["pages"]) {
      for (const auto& setting : page["settings"]) names.push_back(setting["name"].get<std::string>());
    }
    return names;
  }
  std::string get(const std::string& name) const { return box.run({"get", name}).out; }

  SandboxRun box;
};

TEST_F(WishesTest, WhatHoldsAlreadyIsNoChange) {
  expectNoChange({"nvk.port=4073"});
  expectNoChange({"nvk.port.custom=on"});
  expectNoChange({"nvk.port=4073", "nvk.port.custom=on"});
  expectNoChange({"nvk.port=4073", "nvk.port.custom=off"});
  expectNoChange({"rdp.port=3389", "nvk.sound=on", "notify.repeat=1-hour"});
}

TEST_F(WishesTest, ASecondTimeIsNoChange) {
  const std::string port = std::to_string(freePort());
  ASSERT_EQ(box.run({"set", "nvk.port=" + port}).status, 0);
  expectNoChange({"nvk.port=" + port});
  expectNoChange({"nvk.port.custom=on"});
}

TEST_F(WishesTest, TheStandardPortSwitchesItsBoxOff) {
  ASSERT_EQ(box.run({"set", "nvk.port=" + std::to_string(freePort())}).status, 0);
  const Result result = box.run({"set", "nvk.port=4073"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_NE(result.out.find("nvk.port.custom  on -> off"), std::string::npos) << result.out;
  EXPECT_EQ(get("nvk.port.custom"), "off\n");
  expectNoChange({"nvk.port=4073"});
}

TEST_F(WishesTest, WhatGetPrintsSetTakes) {
  for (const char* change : {"connect.act=off", "connect.act=on", "connect.multiuser=on", "nvk.enabled=off",
                             "user.image.defaults=off", "image.depth=8", "connect.multiuser=off"}) {
    ASSERT_EQ(box.run({"--answer", "limits=no", "set", change}).status, 0) << change;
    Words query = settingNames(), assignments;
    query.insert(query.begin(), "get");
    std::istringstream lines(box.run(query).out);
    std::string text;
    for (std::size_t i = 1; std::getline(lines, text); ++i) assignments.push_back(query.at(i) + "=" + text);
    EXPECT_GT(assignments.size(), 30U);
    expectNoChange(assignments);
  }
}

TEST_F(WishesTest, NoneMeansThatNoActionIsTaken) {
  ASSERT_EQ(box.run({"set", "connect.action=lock"}).status, 0);
  ASSERT_EQ(box.run({"set", "connect.action=none"}).status, 0);
  EXPECT_EQ(box.run({"get", "connect.act", "connect.action"}).out, "off\nnone\n");
  expectNoChange({"connect.action=none", "connect.act=off"});
  EXPECT_EQ(box.run({"set", "connect.action=none", "connect.act=on"}).status, 64);
  EXPECT_EQ(box.run({"set", "image.quality=none"}).status, 65);
}

TEST_F(WishesTest, WhiteSpaceAroundANumber) {
  ASSERT_EQ(box.run({"set", "nvk.port= 5073 ", "image.depth=7 "}).status, 0);
  EXPECT_EQ(box.run({"get", "nvk.port", "image.depth"}).out, "5073\n7\n");
  EXPECT_EQ(box.run({"set", "nvk.port=50 73"}).status, 65);
}

// Switching a service off disables its port field, so the field comes first.
TEST_F(WishesTest, AServiceIsSwitchedOffAfterItsPortWasSet) {
  for (const Words& words : {Words{"set", "rdp.enabled=off", "rdp.port=40297"},
                             Words{"set", "nvk.port=40298", "nvk.enabled=off"}}) {
    EXPECT_EQ(box.run(words).status, 0) << words[1];
  }
  EXPECT_EQ(box.run({"get", "rdp.enabled", "rdp.port", "nvk.enabled", "nvk.port"}).out,
            "off\n40297\noff\n40298\n");
  ASSERT_EQ(box.run({"set", "rdp.enabled=on", "nvk.enabled=on"}).status, 0);
  EXPECT_EQ(box.run({"set", "nvk.enabled=off", "rdp.clipboard=off", "nvk.clipboard=off"}).status, 0);
  EXPECT_EQ(box.run({"get", "rdp.clipboard", "nvk.clipboard"}).out, "off\noff\n");
}

TEST_F(WishesTest, OwnImageSettingsAreSetAndThenTheServersFollowed) {
  ASSERT_EQ(box.run({"set", "user.image.defaults=off"}).status, 0);
  const Result result = box.run({"set", "user.image.defaults=on", "user.image.depth=8"});
  EXPECT_EQ(result.status, 78) << result.out << result.err;
  EXPECT_EQ(get("user.image.defaults"), "off\n");
}

TEST_F(WishesTest, UnsetGivesTheDefaults) {
  const std::string nvk = std::to_string(freePort()), rdp = std::to_string(freePort());
  ASSERT_EQ(box.run({"--answer", "limits=no", "--answer", "graphics=yes", "--no-reboot", "set",
                     "nvk.port=" + nvk, "rdp.port=" + rdp, "nvk.clipboard=off", "image.quality=low",
                     "image.buffer=5", "notify.show=1-day", "connect.multiuser=on", "system.wake=off",
                     "system.compositing.disable=on", "user.image.defaults=off", "user.image.depth=4",
                     "user.mouse.swap=on", "notify.news=off"})
                .status,
            65);
  ASSERT_EQ(box.run({"--answer", "limits=no", "--answer", "graphics=yes", "--no-reboot", "set",
                     "nvk.port=" + nvk, "rdp.port=" + rdp, "nvk.clipboard=off", "image.quality=low",
                     "image.buffer=5", "notify.show=15-minutes", "connect.multiuser=on", "system.wake=off",
                     "system.compositing.disable=on", "user.image.defaults=off", "user.image.depth=4",
                     "user.mouse.swap=on", "notify.news=off"})
                .status,
            0);
  EXPECT_EQ(box.run({"unset", "nvk.port", "notify.news"}).status, 0);
  EXPECT_EQ(box.run({"get", "nvk.port", "nvk.port.custom", "notify.news", "rdp.port"}).out,
            "4073\noff\non\n" + rdp + "\n");
  EXPECT_EQ(box.run({"set", "rdp.port=default", "user.mouse.swap=Default"}).status, 0);
  EXPECT_EQ(box.run({"get", "rdp.port", "rdp.port.custom", "user.mouse.swap"}).out, "3389\noff\noff\n");

  Words all = settingNames();
  all.insert(all.begin(), {"unset", "--no-reboot"});
  const Result result = box.run(all);
  EXPECT_EQ(result.status, 0) << result.err;
  const auto shown = box.json({"show"});
  for (const auto& page : shown["pages"]) {
    for (const auto& setting : page["settings"]) EXPECT_EQ(setting["default"], true) << setting;
  }
  const Result again = box.run(all);
  EXPECT_EQ(again.status, 0);
  EXPECT_EQ(again.out, "There was nothing to save.\n");
}

TEST_F(WishesTest, UnsetTakesNamesAlone) {
  EXPECT_EQ(box.run({"unset", "nvk.port=5"}).err,
            "norvikctl: unset takes names alone, not \"nvk.port=5\".\n");
  EXPECT_EQ(box.run({"unset", "nvk.prot"}).status, 64);
  EXPECT_EQ(box.run({"unset", "user.image.depth"}).status, 0);
}

// The user's image controls show the server's values while the user follows them.
TEST_F(WishesTest, WhatDependsOnASwitchIsRefusedWithTheReason) {
  ASSERT_EQ(box.run({"set", "image.depth=8"}).status, 0);
  const Result result = box.run({"unset", "user.image.depth"});
  EXPECT_EQ(result.status, 78);
  EXPECT_NE(result.err.find("it needs user.image.defaults=off"), std::string::npos) << result.err;
}

}  // namespace
}  // namespace norvik::command
