// norvikctl set --try and stop --try, in a sandbox whose time passes twenty times as fast.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <fstream>

#include "tests/frontends/command/sandbox_run.h"
#include "tests/support/files.h"

namespace norvik::command {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

constexpr int kTakenBack = 4;

class TrialCommand : public testing::Test {
 protected:
  // A program whose input neither says anything nor ends, until the test writes to it.
  RunningProgram start(const std::string& words) const {
    ::mkfifo(input().c_str(), 0600);
    const std::string command = "exec 3<>" + input().string() + "; exec " + builtProgram("norvikctl") +
                                " --root " + box.folder().string() + " " + words + " <&3";
    return RunningProgram({"/bin/bash", "-c", command}, {.environment = {{"HOME", box.beside("")}}},
                          box.beside("try"));
  }
  RunningProgram startSound(const std::string& seconds = "3600") const {
    RunningProgram program = start("set --try " + seconds + " nvk.sound=off");
    EXPECT_TRUE(isWaiting());
    return program;
  }
  bool isWaiting() const {
    return eventually([&] { return errors().find("Type \"keep\"") != std::string::npos; });
  }
  fs::path input() const { return box.beside("input"); }
  std::string output() const { return contentOf(box.beside("try")); }
  std::string errors() const { return contentOf(box.beside("try.err")); }
  std::string get(const std::string& name) const { return box.run({"get", name}).out; }
  std::string sound() const { return get("nvk.sound"); }
  fs::path record() const { return box.folder() / ".norvik/state/trial.json"; }

  SandboxRun box;
};

TEST_F(TrialCommand, KeptByAWord) {
  const Result result = box.runAtTerminal({"set", "--try", "3600", "nvk.sound=off"}, "what\nkeep\n");
  EXPECT_EQ(result.status, 0) << result.out;
  EXPECT_NE(result.out.find("Please type \"keep\" or \"revert\"."), std::string::npos) << result.out;
  EXPECT_NE(result.out.find("\nKept.\n"), std::string::npos) << result.out;
  EXPECT_EQ(sound(), "off\n");
  EXPECT_FALSE(fs::exists(record()));
}

TEST_F(TrialCommand, TakenBackByAWord) {
  const std::string port = std::to_string(freePort());
  const Result result = box.runAtTerminal({"set", "--try", "3600", "nvk.port=" + port}, "revert\n");
  EXPECT_EQ(result.status, kTakenBack) << result.out;
  EXPECT_NE(result.out.find("Saved  server settings"), std::string::npos) << result.out;
  EXPECT_NE(result.out.find("\nTaken back, as you said.\n"), std::string::npos) << result.out;
  EXPECT_EQ(get("nvk.port") + get("nvk.port.custom"), "4073\noff\n");
  EXPECT_FALSE(fs::exists(record()));
  EXPECT_EQ(box.json({"history"})["entries"].size(), 2U);
}

TEST_F(TrialCommand, TakenBackWhenTheInputEnds) {
  const Json result = box.json({"set", "--try", "3600", "nvk.sound=off"});
  EXPECT_EQ(result["ok"], true);
  EXPECT_EQ(result["trial"], (Json{{"end", "gone"}, {"notes", Json::array()}}));
  EXPECT_EQ(sound(), "on\n");
}

TEST_F(TrialCommand, TakenBackWhenTheTimeHasPassed) {
  RunningProgram program = startSound("5");
  EXPECT_EQ(program.status(), kTakenBack);
  EXPECT_NE(output().find("Taken back, as the time passed."), std::string::npos) << output();
  EXPECT_EQ(sound(), "on\n");
}

TEST_F(TrialCommand, TakenBackWhenTheProgramIsToldToEnd) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    RunningProgram program = startSound();
    program.send(signal);
    EXPECT_EQ(program.status(), kTakenBack) << errors();
    EXPECT_EQ(sound(), "on\n");
    fs::remove(box.beside("try.err"));
  }
}

TEST_F(TrialCommand, AProgramThatWasKilledIsMadeUpForByTheNext) {
  {
    RunningProgram program = startSound();
    EXPECT_EQ(sound(), "off\n") << "it lives, so it is left alone";
    const Result other = box.run({"set", "--try", "60", "user.mouse.swap=on"});
    EXPECT_EQ(other.status, 75);
    EXPECT_EQ(other.err, "norvikctl: Another change is on trial. Nothing was changed.\n");
    program.send(SIGKILL);
    program.ending();
  }
  EXPECT_EQ(box.run({"set", "user.mouse.swap=on", "--dry-run"}).err, "") << "which changes nothing";
  const Result next = box.run({"get", "nvk.sound"});
  EXPECT_EQ(next.out, "on\n");
  EXPECT_EQ(next.err,
            "norvikctl: A change was on trial when its program ended, and was taken back: nvk.sound.\n");
  EXPECT_FALSE(fs::exists(record()));
  EXPECT_EQ(box.run({"get", "nvk.sound"}).err, "");
}

TEST_F(TrialCommand, WithoutRightsItStaysAndIsSaid) {
  {
    RunningProgram program = startSound();
    program.send(SIGKILL);
    program.ending();
  }
  box.write("/.norvik/authorization", "refused\n");
  const Result next = box.run({"get", "nvk.sound"});
  EXPECT_EQ(next.status, 0);
  EXPECT_EQ(next.out, "off\n");
  EXPECT_NE(next.err.find("is still in force: nvk.sound."), std::string::npos) << next.err;
  EXPECT_NE(next.err.find("To keep it, remove /.norvik/state/trial.json."), std::string::npos) << next.err;
  EXPECT_EQ(box.run({"set", "--try", "60", "user.mouse.swap=on"}).status, 75) << "one after the other";
  box.write("/.norvik/authorization", "granted\n");
  EXPECT_EQ(sound(), "on\n");
}

TEST_F(TrialCommand, WhatSomebodyElseChangedMeanwhileStays) {
  RunningProgram program = start("set --try 3600 image.depth=8 nvk.sound=off");
  ASSERT_TRUE(isWaiting());
  ASSERT_EQ(box.run({"set", "image.depth=5"}).status, 0);
  program.send(SIGTERM);
  EXPECT_EQ(program.status(), kTakenBack);
  EXPECT_NE(output().find("image.depth stays 5, as it was changed again since"), std::string::npos)
      << output();
  EXPECT_EQ(get("image.depth") + sound(), "5\non\n");
}

TEST_F(TrialCommand, NothingIsPutIntoForceThatCouldNotBeTakenBackLater) {
  fs::create_directories(record());
  const Result result = box.run({"set", "--try", "60", "nvk.sound=off"});
  EXPECT_EQ(result.status, 73);
  EXPECT_NE(result.err.find("Nothing was changed."), std::string::npos) << result.err;
  EXPECT_EQ(sound(), "on\n");
  EXPECT_EQ(box.json({"history"})["entries"], Json::array());
}

TEST_F(TrialCommand, AChangeThatFailsIsTakenBackAtOnce) {
  box.replaceProgram("/usr/sbin/nvkservice", "exit 4");
  const Result result = box.run({"set", "--try", "60", "nvk.sound=off", "user.mouse.swap=on"});
  EXPECT_EQ(result.status, 69) << result.err;
  EXPECT_EQ(sound() + get("user.mouse.swap"), "on\noff\n");
}

TEST_F(TrialCommand, NothingToChangeIsNoTrial) {
  EXPECT_EQ(box.run({"set", "--try", "60", "nvk.sound=on"}).status, 0);
  EXPECT_FALSE(fs::exists(record()));
}

TEST_F(TrialCommand, WrongTimes) {
  EXPECT_EQ(box.run({"set", "--try", "4", "nvk.sound=off"}).status, 64);
  EXPECT_EQ(box.run({"set", "--try", "3601", "nvk.sound=off"}).status, 64);
  EXPECT_EQ(box.run({"start", "--try", "60"}).status, 64);
}

TEST_F(TrialCommand, AStopOfTheServer) {
  ASSERT_EQ(box.run({"set", "nvk.port=" + std::to_string(freePort()), "rdp.enabled=off"}).status, 0);
  EXPECT_EQ(box.run({"stop", "--try", "60"}).status, 0) << "it does not run";
  ASSERT_EQ(box.run({"start"}).status, 0);
  const Json back = box.json({"stop", "--try", "60"});
  EXPECT_EQ(back["running"], true) << back;
  EXPECT_EQ(back["trial"]["end"], "gone");
  EXPECT_EQ(box.runAtTerminal({"stop", "--try", "60"}, "keep\n").status, 0);
  EXPECT_EQ(box.run({"is-running"}).status, 3);
}

TEST_F(TrialCommand, AStopWhoseProgramWasKilledIsMadeUpFor) {
  ASSERT_EQ(box.run({"set", "nvk.port=" + std::to_string(freePort()), "rdp.enabled=off"}).status, 0);
  ASSERT_EQ(box.run({"start"}).status, 0);
  {
    RunningProgram program = start("stop --try 3600");
    ASSERT_TRUE(isWaiting());
    program.send(SIGKILL);
    program.ending();
  }
  EXPECT_EQ(box.run({"is-running"}).status, 3);
  EXPECT_NE(box.run({"status"}).err.find("was taken back: the stop of the server."), std::string::npos);
  EXPECT_EQ(box.run({"is-running"}).status, 0);
}

}  // namespace
}  // namespace norvik::command
