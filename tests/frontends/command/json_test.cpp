// The JSON object on every path of every command. What SandboxRun runs is checked against the schema as well.
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <set>

#include "src/frontends/command/command_line.h"
#include "tests/frontends/command/sandbox_run.h"
#include "tests/support/files.h"

namespace norvik::command {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

class JsonTest : public testing::Test {
 protected:
  // Runs with --json, and holds the object against the exit status.
  Json run(Words words, int status) const {
    words.emplace_back("--json");
    const Result result = box.run(words);
    EXPECT_EQ(result.status, status) << result.out << result.err;
    Json object = Json::parse(result.out, nullptr, false);
    EXPECT_TRUE(object.is_object()) << result.out;
    if (!object.is_object()) return Json::object();
    EXPECT_EQ(object["ok"], status == 0);
    EXPECT_EQ(object["error"].is_null(), status == 0);
    if (status == 0) return object;
    EXPECT_EQ(object["error"]["status"], status);
    EXPECT_NE(result.err.find("norvikctl: "), std::string::npos);
    return object;
  }
  std::string code(const Words& words, int status) const { return run(words, status)["error"]["code"]; }

  SandboxRun box;
};

TEST_F(JsonTest, EveryCommandThatSucceeds) {
  std::set<std::string> shown;
  const std::string port = std::to_string(freePort()), other = std::to_string(freePort());
  const std::string profile = box.beside("profile.json");
  std::ofstream(profile) << R"({"norvikProfile": 1, "settings": {"nvk.sound": false}})";
  for (const Words& words : {Words{"status"},
                             Words{"show"},
                             Words{"get", "nvk.port", "connect.action"},
                             Words{"limits"},
                             Words{"set", "nvk.port=" + port, "rdp.port=" + other},
                             Words{"unset", "user.mouse.swap"},
                             Words{"history"},
                             Words{"undo"},
                             Words{"export"},
                             Words{"import", profile},
                             Words{"diff", profile},
                             Words{"start"},
                             Words{"is-running"},
                             Words{"apply"},
                             Words{"restart"},
                             Words{"stop"},
                             Words{"displays"},
                             Words{"access"},
                             Words{"completion", "bash"},
                             Words{"validate"},
                             Words{"restore"}}) {
    const Json object = run(words, 0);
    EXPECT_EQ(object["command"], words[0]);
    EXPECT_EQ(object["schema"], 1);
    shown.insert(words[0]);
  }
  // Its exit status is an answer, as that of is-running.
  EXPECT_EQ(box.json({"check"})["ok"], true);
  shown.insert("check");
  for (const Command& command : commands()) {
    EXPECT_TRUE(shown.contains(std::string(command.name)) || command.name == "watch") << command.name;
  }
  EXPECT_FALSE(run({"--version"}, 0)["version"].get<std::string>().empty());
}

TEST_F(JsonTest, WatchPrintsAnObjectOnALine) {
  JsonOutputs lines(box.beside("lines"));
  {
    const RunningProgram watch = box.start({"watch", "--json"}, "watch");
    ASSERT_TRUE(
        eventually([&] { return contentOf(box.beside("watch")).find("\"inForce\"") != std::string::npos; }));
  }
  std::ifstream file(box.beside("watch"));
  int count = 0;
  for (std::string line; std::getline(file, line); ++count) lines.keep(line);
  EXPECT_EQ(count, 1);
  lines.check();
}

TEST_F(JsonTest, AWrongLine) {
  EXPECT_EQ(run({"strat"}, 64)["command"], nullptr);
  EXPECT_EQ(run({}, 64)["error"]["message"], "a command is missing.");
  EXPECT_EQ(run({"--jsno", "status"}, 64)["error"]["advice"], "Try \"norvikctl --help\".");
  for (const Words& words : {Words{"--answer", "default", "set", "nvk.sound=off"}, Words{"set"},
                             Words{"status", "extra"}, Words{"start", "--dry-run"}, Words{"limits", "up"},
                             Words{"get", "nvk.prot"}, Words{"show", "xyz"}, Words{"set", "nvk.sound"},
                             Words{"set", "nvk.sound=on", "nvk.sound=off"}, Words{"unset", "nvk.sound=on"},
                             Words{"completion", "csh"}, Words{"set", "system.compositing.disable=on"}}) {
    EXPECT_EQ(code(words, 64), "usage") << words[0];
  }
  const Result root = runProgram("norvikctl", {"--json", "--root", "/nowhere", "status"}, box.beside(""));
  EXPECT_EQ(Json::parse(root.out)["error"]["message"], "no such directory: \"/nowhere\".");
}

TEST_F(JsonTest, AWrongValueNamesItsSetting) {
  const Json object = run({"set", "user.mouse.swap=on", "nvk.port=70000"}, 65);
  EXPECT_EQ(object["error"]["code"], "wrong-value");
  EXPECT_EQ(object["error"]["setting"], "nvk.port");
  EXPECT_EQ(object["changed"], false);
  EXPECT_EQ(run({"set", "nvk.port=3389"}, 65)["error"]["setting"], "nvk.port");
  EXPECT_EQ(run({"set", "nvk.prot=1", "nvk.port=70000"}, 64)["error"]["setting"], "nvk.prot");
}

TEST_F(JsonTest, WhatCannotBeSetAsThingsAre) {
  EXPECT_EQ(run({"set", "user.image.depth=7"}, 78)["error"]["setting"], "user.image.depth");
  EXPECT_EQ(code({"limits", "reset"}, 78), "not-settable");
}

TEST_F(JsonTest, AChange) {
  const Json object = run({"set", "nvk.sound=off", "nvk.printing=on"}, 0);
  EXPECT_EQ(object["changed"], true);
  ASSERT_EQ(object["changes"].size(), 1U);
  EXPECT_EQ(object["changes"][0]["name"], "nvk.sound");
  EXPECT_EQ(object["changes"][0]["to"], false);
  EXPECT_EQ(object["saved"], Json({"server settings"}));
  EXPECT_EQ(object["commands"].size(), 4U);
  EXPECT_EQ(run({"set", "nvk.sound=off"}, 0)["changed"], false);
}

TEST_F(JsonTest, OfADryRunWhatWouldHappenIsInThePreview) {
  const Json object = run({"set", "nvk.sound=off", "--dry-run"}, 0);
  EXPECT_EQ(object["changed"], false);
  EXPECT_EQ(object["changes"][0]["name"], "nvk.sound");
  EXPECT_EQ(object["commands"], Json::array());
  EXPECT_EQ(object["saved"], Json::array());
  EXPECT_EQ(object["preview"]["groups"], Json({"server settings"}));
  EXPECT_EQ(object["preview"]["commands"].size(), 4U);
  EXPECT_EQ(object["preview"]["files"], Json({kServerFile}));
  EXPECT_EQ(object["preview"]["told"], Json({"the server"}));
  EXPECT_EQ(object["preview"]["endsConnections"], false);
  EXPECT_EQ(object["preview"]["needsRestart"], false);
}

TEST_F(JsonTest, APreviewSaysWhetherConnectionsEndAndTheComputerHasToRestart) {
  const std::string port = std::to_string(freePort()), other = std::to_string(freePort());
  ASSERT_EQ(box.run({"set", "nvk.port=" + port, "rdp.enabled=off"}).status, 0);
  ASSERT_EQ(box.run({"start"}).status, 0);
  const Words moves{"set", "nvk.port=" + other, "--dry-run"};
  EXPECT_EQ(run(moves, 0)["preview"]["endsConnections"], true);
  EXPECT_NE(box.run(moves).out.find("\nConnections to the service that changes would end.\n"),
            std::string::npos);
  const Words restarts{"set", "system.compositing.disable=on", "--reboot", "--dry-run"};
  const Json preview = run(restarts, 0)["preview"];
  EXPECT_EQ(preview["needsRestart"], true);
  EXPECT_EQ(std::ranges::count(preview["commands"], Json({"/sbin/reboot"})), 1) << preview;
  EXPECT_NE(box.run(restarts).out.find("\nThe computer would have to restart"), std::string::npos);
}

TEST_F(JsonTest, AWarning) {
  const Listener other;
  const Json object = run({"set", "nvk.port=" + std::to_string(other.port())}, 0);
  ASSERT_EQ(object["warnings"].size(), 1U);
  EXPECT_NE(object["warnings"][0].get<std::string>().find("is in use by another program"), std::string::npos);
}

TEST_F(JsonTest, WhatTheComputerDoesNotDo) {
  box.replaceProgram("/bin/mv", "exit 1");
  const Json lost = run({"set", "nvk.sound=off"}, 73);
  EXPECT_EQ(lost["error"]["code"], "not-written");
  EXPECT_EQ(lost["notSaved"], Json({"nvk.sound"}));
  EXPECT_EQ(lost["saved"], Json::array());
  fs::remove(box.folder() / "bin/mv");
  const Json refused = run({"set", "nvk.sound=off"}, 77);
  EXPECT_EQ(refused["log"].size(), 1U);
  EXPECT_EQ(refused["commands"][0]["outcome"], "refused");
  EXPECT_EQ(refused["commands"][0]["status"], nullptr);
  fs::remove(box.folder() / "usr/sbin/nvkservice");
  EXPECT_EQ(code({"start"}, 69), "server");
  EXPECT_EQ(code({"displays"}, 69), "server");
}

TEST_F(JsonTest, RightsThatAreNotGiven) {
  box.write("/.norvik/authorization", "refused\n");
  for (const Words& words : {Words{"set", "nvk.sound=off"}, Words{"unset", "nvk.sound"}, Words{"start"},
                             Words{"limits", "adjust"}, Words{"access"}}) {
    EXPECT_EQ(code(words, 77), "not-allowed") << words[0];
  }
  run({"limits"}, 0);
}

// The address space is limited, more and more widely: at first the program cannot be loaded or not even the
// shell, in the end it succeeds, and between them it is refused memory at one place or another, as the line
// is so long. The sanitizers need too much themselves.
#ifndef NORVIK_SANITIZED
TEST_F(JsonTest, TooLittleMemory) {
  constexpr int kNotLoaded = 127, kNoShell = 2, kSignal = -1;
  Words words{"/bin/bash", "-c",     "ulimit -v $0; exec \"$@\"", "limit", builtProgram("norvikctl"),
              "--json",    "--root", box.folder().string(),       "get"};
  words.insert(words.end(), 20'000, "nvk.port");
  std::set<int> statuses;
  for (int limit = 8'000; !statuses.contains(0) && limit < 200'000; limit += 500) {
    words[3] = std::to_string(limit);
    const ProgramResult result = norvik::runProgram(words, {.environment = {{"HOME", box.beside("")}}});
    // A little above what it takes to be loaded, the run time has no memory for an exception either.
    const bool isBarelyLoaded = result.status == kSignal && !statuses.contains(kExitSoftware);
    if (isBarelyLoaded && result.errors == "terminate called without an active exception\n") continue;
    statuses.insert(result.status);
    if (result.status != kExitSoftware) continue;
    EXPECT_EQ(result.errors, "norvikctl: there is too little memory.\n");
    EXPECT_EQ(Json::parse(result.output, nullptr, false)["error"]["code"], "software") << result.output;
  }
  EXPECT_TRUE(statuses.contains(kExitSoftware) && statuses.contains(0));
  EXPECT_FALSE(statuses.contains(kSignal));
  for (const int other : {kNotLoaded, kNoShell}) statuses.erase(other);
  EXPECT_EQ(statuses.size(), 2U);
}
#endif

}  // namespace
}  // namespace norvik::command
