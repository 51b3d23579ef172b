// norvikctl history and undo.
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/frontends/command/sandbox_run.h"

namespace norvik::command {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

class HistoryCommand : public testing::Test {
 protected:
  void set(const Words& assignments) const {
    Words words{"set"};
    words.insert(words.end(), assignments.begin(), assignments.end());
    const Result result = box.run(words);
    ASSERT_EQ(result.status, 0) << result.err;
  }
  std::string get(const std::string& name) const { return box.run({"get", name}).out; }
  fs::path place() const { return box.folder() / ".norvik/state/history.jsonl"; }

  SandboxRun box;
};

TEST_F(HistoryCommand, ShowsWhatWasChangedTheLatestFirst) {
  EXPECT_EQ(box.run({"history"}).out, "The history is empty.\n");
  set({"nvk.sound=off"});
  set({"user.mouse.swap=on", "image.depth=8"});
  const Json entries = box.json({"history"})["entries"];
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_EQ(entries[0]["number"], 1);
  EXPECT_EQ(entries[0]["frontEnd"], "norvikctl");
  EXPECT_EQ(entries[0]["outcome"], "ok");
  EXPECT_EQ(entries[0]["settings"], (Json::parse(R"([{"name": "user.mouse.swap", "old": false, "new": true},
                                                     {"name": "image.depth", "old": 6, "new": 8}])")));
  EXPECT_EQ(entries[1]["settings"][0]["name"], "nvk.sound");
  const std::string text = box.run({"history"}).out;
  EXPECT_NE(text.find("  norvikctl  ok  user.mouse.swap  off -> on\n"), std::string::npos) << text;
  EXPECT_NE(text.find("image.depth  6 -> 8\n"), std::string::npos) << text;
}

TEST_F(HistoryCommand, WhatTheFileHoldsDoesNotReachTheTerminalAsItIs) {
  box.write("/.norvik/state/history.jsonl",
            R"({"norvikChange":1,"time":"\u001b[2J","frontEnd":"x\ny","user":"u","settings":[)"
            R"({"name":"a\u0007","old":"\u009b","new":true}],"outcome":"ok","saved":[],"notSaved":[]})");
  const std::string text = box.run({"history"}).out;
  EXPECT_EQ(text.find_first_of("\x1b\x07"), std::string::npos) << text;
  EXPECT_EQ(countOf(text, "\n"), 1) << text;
  EXPECT_EQ(box.run({"undo"}).err,
            "norvikctl: a\\x07 is not available on this computer. Nothing was changed.\n");
}

TEST_F(HistoryCommand, TakesAChangeBack) {
  const std::string port = std::to_string(freePort());
  set({"nvk.port=" + port, "nvk.sound=off"});
  set({"user.mouse.swap=on"});
  const Result dry = box.run({"undo", "2", "--dry-run"});
  EXPECT_NE(dry.out.find("nvk.port         " + port + " -> 4073"), std::string::npos) << dry.out;
  EXPECT_EQ(get("nvk.port"), port + "\n");
  EXPECT_EQ(box.run({"undo", "2"}).status, 0);
  EXPECT_EQ(get("nvk.port") + get("nvk.sound") + get("user.mouse.swap"), "4073\non\non\n");
  EXPECT_EQ(box.run({"undo"}).status, 0) << "the undo is the latest change";
  EXPECT_EQ(get("nvk.port"), port + "\n");
}

TEST_F(HistoryCommand, WhatWasChangedAgainIsNamedAndLeft) {
  set({"image.depth=8", "user.mouse.swap=on"});
  set({"image.depth=5"});
  const Json undone = box.json({"undo", "2"});
  EXPECT_EQ(undone["notes"], Json({"image.depth stays 5, as it was changed again since: the change had made "
                                   "it 8."}));
  EXPECT_EQ(get("image.depth") + get("user.mouse.swap"), "5\noff\n");
  EXPECT_EQ(box.run({"undo", "3"}).status, 78) << "the rest is back already";
  EXPECT_EQ(box.run({"undo", "3", "--changed-again"}).status, 0);
  EXPECT_EQ(get("image.depth"), "6\n");
}

TEST_F(HistoryCommand, WhatWasWhollyChangedAgainIsRefused) {
  set({"image.depth=8"});
  set({"image.depth=5"});
  const Result result = box.run({"undo", "2"});
  EXPECT_EQ(result.status, 78);
  EXPECT_NE(result.err.find("What there is to take back was changed again since. Nothing was changed.\n"
                            "Take it back all the same with --changed-again."),
            std::string::npos)
      << result.err;
}

TEST_F(HistoryCommand, WrongNumbers) {
  EXPECT_EQ(box.run({"undo"}).status, 78);
  set({"nvk.sound=off"});
  EXPECT_EQ(box.run({"undo", "0"}).status, 64);
  EXPECT_EQ(box.run({"undo", "x"}).err, "norvikctl: undo takes the number of an entry, not \"x\".\n");
  EXPECT_EQ(box.run({"undo", "2"}).err, "norvikctl: The history has 1 entry alone.\n");
}

TEST_F(HistoryCommand, AnUndoNeedsTheRightsOfTheChange) {
  set({"nvk.sound=off"});
  box.write("/.norvik/authorization", "refused\n");
  EXPECT_EQ(box.run({"undo"}).status, 77);
  EXPECT_EQ(get("nvk.sound"), "off\n");
}

TEST_F(HistoryCommand, AHistoryThatIsALinkIsSaid) {
  fs::create_directories(place().parent_path());
  fs::create_symlink("/etc/hostname", place());
  const Result changed = box.run({"set", "nvk.sound=off"});
  EXPECT_EQ(changed.status, 0);
  EXPECT_NE(changed.err.find("The change is not in the history, as /.norvik/state/history.jsonl could not be "
                             "written: Is a link."),
            std::string::npos)
      << changed.err;
  EXPECT_EQ(box.run({"history"}).status, 66);
}

TEST_F(HistoryCommand, AHistoryOnAFullDiskFailsNoChange) {
  for (const char* calls : {"write", "fsync", "rename", "open-write"}) {
    const bool isOn = get("nvk.sound") == "on\n";
    const Result changed = box.runWith({.calls = calls, .effect = "ENOSPC", .path = "*/history.jsonl*"},
                                       {"set", isOn ? "nvk.sound=off" : "nvk.sound=on"});
    EXPECT_EQ(changed.status, 0) << calls << changed.err;
    EXPECT_NE(changed.err.find("The change is not in the history"), std::string::npos)
        << calls << changed.err;
    EXPECT_EQ(get("nvk.sound"), isOn ? "off\n" : "on\n") << calls;
  }
  for (const auto& file : fs::directory_iterator(place().parent_path()))
    EXPECT_EQ(file.path().string().find(".new"), std::string::npos) << file.path();
}

}  // namespace
}  // namespace norvik::command
