// The command line in other languages: what a person reads changes, what a script reads does not.
#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <thread>

#include "src/frontends/command/display_width.h"
#include "src/frontends/command/table.h"
#include "tests/frontends/command/sandbox_run.h"

namespace norvik::command {
namespace {

class LanguageTest : public testing::Test {
 protected:
  LanguageTest() { german.environment = {{"LANGUAGE", "de"}, {"LC_ALL", "C.UTF-8"}}; }

  // What a command prints, with what differs from one sandbox to another made the same.
  static std::string steady(const SandboxRun& box, const std::string& printed) {
    std::string same = printed;
    for (std::size_t at = 0; (at = same.find(box.beside("").string(), at)) != std::string::npos;)
      same.replace(at, box.beside("").string().size(), "HERE/");
    return std::regex_replace(same, std::regex("[0-9]+"), "N");
  }

  SandboxRun german;
};

TEST_F(LanguageTest, JsonIsTheSameInEveryLanguage) {
  SandboxRun plain;
  plain.environment = {{"LC_ALL", "C"}};
  for (const SandboxRun* box : {&plain, &german}) {
    std::ofstream(box->beside("profile.json")) << R"({"norvikProfile": 1, "settings": {"nvk.sound": false}})";
    std::ofstream(box->beside("wrong.json"))
        << R"({"norvikProfile": 1, "settings": {"nvk.sound": 7}, "x": 1})";
  }
  const std::vector<Words> lines{{"status"},
                                 {"show"},
                                 {"show", "nvk.port"},
                                 {"get", "nvk.port", "connect.action"},
                                 {"limits"},
                                 {"check"},
                                 {"set", "nvk.port=PORT", "rdp.enabled=off"},
                                 {"set", "nvk.sound=off", "--dry-run"},
                                 {"unset", "user.mouse.swap"},
                                 {"export"},
                                 {"import", "profile.json"},
                                 {"diff", "profile.json"},
                                 {"start"},
                                 {"is-running"},
                                 {"apply"},
                                 {"status"},
                                 {"check"},
                                 {"stop"},
                                 {"completion", "bash"},
                                 {"validate"},
                                 {"validate", "wrong.json"},
                                 {"restore"},
                                 {"history"},
                                 {"--version"},
                                 // Failures say why in a sentence.
                                 {"strat"},
                                 {},
                                 {"set"},
                                 {"set", "nvk.port=70000"},
                                 {"set", "nvk.prot=1"},
                                 {"set", "user.image.depth=7"},
                                 {"limits", "reset"},
                                 {"show", "xyz"},
                                 {"set", "system.compositing.disable=on"},
                                 {"--answer", "x", "status"}};
  // At once, each server with a port of its own.
  std::vector<std::string> printed[2];
  const auto runAll = [&lines](const SandboxRun& box, std::vector<std::string>& all) {
    const std::string port = std::to_string(freePort());
    for (Words words : lines) {
      for (std::string& word : words) {
        if (word.ends_with(".json")) word = box.beside(word);
        if (word == "nvk.port=PORT") word = "nvk.port=" + port;
      }
      words.emplace_back("--json");
      const Result result = box.run(words);
      all.push_back(std::to_string(result.status) + "\n" + steady(box, result.out) + steady(box, result.err));
    }
  };
  std::thread other([&] { runAll(plain, printed[0]); });
  runAll(german, printed[1]);
  other.join();
  for (std::size_t i = 0; i < lines.size(); ++i) EXPECT_EQ(printed[1][i], printed[0][i]) << "line " << i;
}

TEST_F(LanguageTest, APersonReadsTheLanguageThatTheEnvironmentNames) {
  const std::string said = german.run({"status"}).out;
  EXPECT_NE(said.find("Schloss"), std::string::npos) << said;
  EXPECT_EQ(said.find("Lock"), std::string::npos) << said;
  const Result wrong = german.run({"set", "nvk.port=70000"});
  EXPECT_EQ(wrong.status, 65);
  EXPECT_EQ(wrong.err.find("takes"), std::string::npos) << wrong.err;
  EXPECT_NE(wrong.err.find("nvk.port"), std::string::npos) << wrong.err;
}

TEST_F(LanguageTest, WhatIsTypedAndStoredStaysEnglish) {
  EXPECT_EQ(german.run({"set", "nvk.sound=off", "user.image.quality=Low", "user.image.defaults=off"}).status,
            0);
  EXPECT_EQ(german.run({"get", "nvk.sound", "user.image.quality"}).out, "off\nLow\n");
  EXPECT_EQ(german.run({"show", "image"}).status, 0);
}

TEST_F(LanguageTest, AnUnknownLanguageAndTheLocaleCAreEnglish) {
  for (const auto& variables : std::vector<std::map<std::string, std::string>>{
           {{"LANGUAGE", "tlh"}, {"LC_ALL", "C.UTF-8"}}, {{"LANGUAGE", "de"}, {"LC_ALL", "C"}}}) {
    german.environment = variables;
    EXPECT_NE(german.run({"status"}).out.find("Lock "), std::string::npos);
  }
}

TEST(DisplayWidthTest, InCells) {
  EXPECT_EQ(displayWidth("Port"), 4U);
  EXPECT_EQ(displayWidth("Größe"), 5U);
  EXPECT_EQ(displayWidth("ポート"), 6U);
  EXPECT_EQ(displayWidth("منفذ"), 4U);
  EXPECT_EQ(displayWidth("e\u0301"), 1U) << "a mark over a letter takes none";
  EXPECT_EQ(displayWidth("\xff"), 1U);
}

TEST(DisplayWidthTest, ColumnsBehindWideTextsAlign) {
  std::ostringstream out;
  writeTable(out, {{"ポート", "1"}, {"Port", "2"}});
  EXPECT_EQ(out.str(), "ポート  1\nPort    2\n");
}

}  // namespace
}  // namespace norvik::command
