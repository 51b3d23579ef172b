// Profiles end to end: what export leaves out, that a second computer takes all of it, that a second import
// changes nothing, and what becomes of a profile that cannot be taken.
#include <gtest/gtest.h>

#include <unistd.h>

#include <fstream>
#include <optional>
#include <random>

#include "tests/frontends/command/sandbox_run.h"
#include "tests/support/files.h"

namespace norvik::command {
namespace {

using Json = nlohmann::json;

class ProfilesTest : public testing::Test {
 protected:
  std::string profile(const std::string& settings) const {
    const std::string path = box.beside("profile.json");
    std::ofstream(path) << "{\"norvikProfile\": 1, \"settings\": {" << settings << "}}";
    return path;
  }
  std::string exported(const SandboxRun& from) const {
    const Result result = from.run({"export"});
    EXPECT_EQ(result.status, 0) << result.err;
    std::string path = box.beside("exported.json");
    std::ofstream(path) << result.out;
    return path;
  }
  std::string get(const std::string& name) const { return box.run({"get", name}).out; }
  void expectImported(const std::string& settings, const Words& options = {}) const {
    Words words{"import", profile(settings)};
    words.insert(words.end(), options.begin(), options.end());
    const Result result = box.run(words);
    EXPECT_EQ(result.status, 0) << result.out << result.err;
    words[0] = "diff";
    const Result difference = box.run(words);
    EXPECT_EQ(difference.status, 0) << difference.out << difference.err;
    EXPECT_EQ(difference.out, "Nothing differs.\n");
    words[0] = "import";
    const auto before = box.files();
    EXPECT_EQ(box.json(words)["changed"], false);
    EXPECT_EQ(box.files(), before);
  }
  // Refused, with nothing changed; `error` is the end of what is said.
  void expectRefused(const std::string& path, int status, const std::string& error) const {
    const auto before = box.files();
    for (const char* command : {"import", "diff"}) {
      const Result result = box.run({command, path});
      EXPECT_EQ(result.status, status) << result.out;
      EXPECT_EQ(result.out, "");
      EXPECT_TRUE(result.err.ends_with(error + "\n")) << result.err;
    }
    EXPECT_EQ(box.files(), before);
  }

  SandboxRun box;
};

TEST_F(ProfilesTest, OnlyWhatIsNamedChanges) {
  ASSERT_EQ(box.run({"set", "rdp.port=7999", "nvk.sound=off"}).status, 0);
  expectImported("\"nvk.port\": 5000, \"image.quality\": \"low\", \"connect.action\": \"lock\"");
  EXPECT_EQ(box.run({"get", "nvk.port", "nvk.port.custom", "image.quality", "connect.action", "rdp.port",
                     "nvk.sound"})
                .out,
            "5000\non\nLow\nlock\n7999\noff\n");
}

TEST_F(ProfilesTest, ExactGivesTheOthersTheirDefaults) {
  ASSERT_EQ(box.run({"set", "rdp.port=7999", "nvk.sound=off", "connect.act=off", "user.image.defaults=off",
                     "user.image.depth=8", "notify.repeat=1-day"})
                .status,
            0);
  expectImported("\"nvk.port\": 5000", {"--exact"});
  EXPECT_EQ(Json::parse(box.run({"export", "--changed-only"}).out)["settings"],
            (Json{{"nvk.port", 5000}, {"nvk.port.custom", true}}));
  expectImported("\"connect.act\": false, \"user.image.defaults\": false, \"user.image.depth\": 4",
                 {"--exact"});
  expectImported("", {"--exact"});
  EXPECT_EQ(Json::parse(box.run({"export", "--changed-only"}).out)["settings"], Json::object());
}

// The controls of a service that is off are disabled.
TEST_F(ProfilesTest, SettingsOfAServiceThatIsOffAreSet) {
  ASSERT_EQ(box.run({"set", "nvk.enabled=off"}).status, 0);
  expectImported("\"nvk.enabled\": false, \"nvk.clipboard\": false, \"nvk.port\": 5000");
  EXPECT_EQ(box.run({"get", "nvk.enabled", "nvk.clipboard", "nvk.port"}).out, "off\noff\n5000\n");
  expectImported("\"nvk.clipboard\": true");
  EXPECT_EQ(get("nvk.enabled"), "off\n");
}

TEST_F(ProfilesTest, AnotherComputerTakesAllOfIt) {
  const SandboxRun other;
  std::mt19937 random(20261122);
  const auto oneOf = [&](const std::vector<std::string>& words) { return words[random() % words.size()]; };
  for (int round = 0; round < 4; ++round) {
    Words words{"--answer",        "limits=no", "--answer",
                "reset-limits=no", "--answer",  "graphics=yes",
                "--no-reboot",     "import",    profile("\"nvk.enabled\": true, \"rdp.enabled\": true"),
                "--exact"};
    ASSERT_EQ(box.run(words).status, 0);
    words.resize(7);
    words.insert(words.end(), {"set", "user.image.defaults=off"});
    const Json pages = box.json({"show"})["pages"];
    for (const Json& page : pages) {
      for (const Json& setting : page["settings"]) {
        const std::string name = setting["name"];
        if (name == "user.image.defaults" || name == "connect.act") continue;
        if (name.ends_with(".custom") || name.ends_with(".enabled") || name == "connect.multiuser") continue;
        if (setting["value"].is_boolean()) {
          words.push_back(name + "=" + oneOf({"on", "off"}));
        } else if (setting.contains("items")) {
          words.push_back(name + "=" + oneOf(setting["items"].get<Words>()));
        } else if (name.ends_with(".port")) {
          words.push_back(name + "=" + std::to_string((name[0] == 'n' ? 5000 : 6000) + random() % 999));
        } else if (setting.contains("minimum")) {
          const int least = setting["minimum"], most = setting["maximum"];
          words.push_back(
              name + "=" +
              std::to_string(least + static_cast<int>(random() % static_cast<unsigned>(most - least + 1))));
        }
      }
    }
    Result result = box.run(words);
    ASSERT_EQ(result.status, 0) << result.err;
    words.resize(7);
    words.insert(words.end(),
                 {"set", "nvk.enabled=" + oneOf({"on", "off"}), "rdp.enabled=" + oneOf({"on", "off"}),
                  "connect.act=" + oneOf({"on", "off"}), "user.image.defaults=" + oneOf({"on", "off"})});
    ASSERT_EQ(box.run(words).status, 0);
    words.resize(7);
    words.insert(words.end(), {"import", exported(box)});
    result = other.run(words);
    ASSERT_EQ(result.status, 0) << result.err << contentOf(words.back());
    EXPECT_EQ(other.run({"export"}).out, box.run({"export"}).out) << "round " << round;
    const Json again = [&] {
      words.emplace_back("--json");
      return Json::parse(other.run(words).out);
    }();
    EXPECT_EQ(again["changed"], false) << again;
  }
}

TEST_F(ProfilesTest, ExportOfPagesAndNames) {
  const auto names = [&](Words words) {
    words.insert(words.begin(), "export");
    std::string all;
    const Json profile = Json::parse(box.run(words).out);
    for (const auto& [name, value] : profile["settings"].items()) all += name + " ";
    return all;
  };
  EXPECT_EQ(names({"nvk.port", "mouse"}), "nvk.port user.mouse.swap ");
  EXPECT_EQ(names({"rdp.port", "rdp-clients"}),
            "rdp.clipboard rdp.enabled rdp.port rdp.port.custom rdp.printing rdp.sound ");
  EXPECT_EQ(box.run({"export", "nvk.prot"}).status, 64);
}

// While the user follows the server's image settings, the user's controls show those.
TEST_F(ProfilesTest, WhatOnlyFollowsIsLeftOut) {
  ASSERT_EQ(box.run({"set", "image.depth=8"}).status, 0);
  const Result result = box.run({"export", "user.image.depth", "image.depth"});
  EXPECT_EQ(Json::parse(result.out)["settings"], (Json{{"image.depth", 8}}));
  EXPECT_NE(result.err.find("user.image.depth is not in the profile: it follows the server's settings."),
            std::string::npos);
  EXPECT_EQ(box.run({"export"}).err, "");
}

TEST_F(ProfilesTest, NothingOfTheComputerIsInIt) {
  const std::string text = box.run({"export"}).out;
  char host[256] = {};
  gethostname(host, sizeof host - 1);
  ASSERT_NE(box.read(kServerFile).find("LicenseHolder"), std::string::npos);
  const std::string holder = *box.list(kServerFile).find("LicenseHolder")->as<std::string>();
  for (const std::string& word : {std::string("LicenseHolder"), holder, std::string(host), std::string("/"),
                                  box.folder().string(), std::string("127.0.0.1"), std::string("20")}) {
    EXPECT_EQ(text.find(word), std::string::npos) << word;
  }
  const auto profile = Json::parse(text);
  EXPECT_EQ(profile.size(), 2U);
}

TEST_F(ProfilesTest, AProfileOnTheStandardInput) {
  const std::string program = builtProgram("norvikctl");
  const auto piped = [&](const std::string& text, const std::string& words) {
    return runProgram(
        "/bin/sh",
        {"-c", "printf '%s' '" + text + "' | " + program + " --root " + box.folder().string() + " " + words},
        box.beside(""));
  };
  const std::string text = "{\"norvikProfile\": 1, \"settings\": {\"nvk.sound\": false}}";
  EXPECT_EQ(piped(text, "diff -").status, 1);
  EXPECT_EQ(piped(text, "import -").status, 0);
  EXPECT_EQ(piped(text, "diff -").status, 0);
  EXPECT_EQ(piped(text, "validate -").out, "Nothing is wrong with it.\n");
  EXPECT_EQ(piped("", "import -").status, 66);
  EXPECT_NE(piped("{", "import -").err.find("standard input, line 1: it ends before"), std::string::npos);
}

TEST_F(ProfilesTest, ADryRunChangesNothing) {
  const auto before = box.files();
  const Json object = box.json({"import", profile("\"nvk.port\": 5000"), "--dry-run"});
  EXPECT_EQ(object["changes"].size(), 2U);
  EXPECT_EQ(object["preview"]["files"], Json({kServerFile}));
  EXPECT_EQ(object["changed"], false);
  EXPECT_EQ(box.files(), before);
}

TEST_F(ProfilesTest, ADifferenceIsAnAnswer) {
  const std::string path = profile("\"nvk.port\": 5000");
  const Result result = box.run({"diff", path});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.out,
            "nvk.port.custom  off -> on     (needed by nvk.port)\nnvk.port         4073 -> 5000\n");
  const Json object = box.json({"diff", path});
  EXPECT_EQ(object["ok"], true);
  EXPECT_EQ(object["same"], false);
  EXPECT_EQ(object["changes"][1]["to"], 5000);
  EXPECT_EQ(box.json({"diff", profile("\"nvk.port\": 4073")})["same"], true);
}

TEST_F(ProfilesTest, AProfileThatCannotBeTaken) {
  const std::string wrong = profile("\n\"nvk.prot\": 5000");
  expectRefused(wrong, 65, wrong + ", line 2: unknown setting \"nvk.prot\". Did you mean \"nvk.port\"?");
  EXPECT_EQ(box.json({"import", wrong})["error"]["setting"], "nvk.prot");
  const std::string port = profile("\"nvk.port\": 70000");
  expectRefused(port, 65, "nvk.port takes a whole number from 1 to 65535, not 70000.");
  expectRefused(profile("\"nvk.port\": 5000, \"rdp.port\": 5000"), 65,
                "Port 5000 is already the port for RDP clients; each service needs its own port.");
  expectRefused(profile("\"nvk.port\": 5000, \"nvk.port.custom\": false"), 64,
                "nvk.port needs nvk.port.custom=on.");
  // Its own image settings are taken up only by a user who does not follow the server's.
  expectRefused(
      profile("\"user.image.depth\": 8"), 78,
      "user.image.depth cannot be set to 8 now: it needs user.image.defaults=off. Nothing was changed.");
  expectRefused(profile("\"system.opengl\": \"Standard\""), 78,
                "system.opengl is not available on this computer. Nothing was changed.");
  expectRefused("/nowhere.json", 66, "/nowhere.json: it cannot be read (No such file or directory).");
  expectRefused(box.folder(), 66, ": it is no regular file.");
}

TEST_F(ProfilesTest, NothingIsExportedFromOrComparedWithADamagedFile) {
  const std::string path = profile("\"nvk.port\": 4073");
  box.write(kServerFile, box.read(kServerFile).substr(0, 500));
  EXPECT_EQ(box.run({"export"}).status, 66);
  EXPECT_EQ(box.run({"export"}).out, "");
  EXPECT_EQ(box.run({"diff", path}).status, 66);
  const auto before = box.files();
  EXPECT_EQ(box.run({"import", path}).status, 66);
  EXPECT_EQ(box.run({"import", profile("\"nvk.enabled\": true"), "--exact"}).status, 66);
  EXPECT_EQ(box.files(), before);
}

TEST_F(ProfilesTest, ValidateChecksAProfileOnNoComputer) {
  const auto validate = [&](const std::string& path) {
    return runProgram("norvikctl", {"validate", path, "--json"}, box.beside(""));
  };
  const Result good = validate(profile("\"nvk.port\": 5000"));
  EXPECT_EQ(good.status, 0) << good.err;
  const std::string wrong = profile("\"nvk.prot\": 5000,\n\"nvk.port\": 0");
  const Result result = validate(wrong);
  EXPECT_EQ(result.status, 65);
  const Json object = Json::parse(result.out);
  ASSERT_EQ(object["impossible"].size(), 2U);
  EXPECT_EQ(object["impossible"][0]["key"], "nvk.prot");
  EXPECT_EQ(object["impossible"][0]["setting"], nullptr);
  EXPECT_EQ(object["impossible"][0]["reason"],
            "line 1: unknown setting \"nvk.prot\". Did you mean \"nvk.port\"?");
  EXPECT_EQ(object["impossible"][1]["setting"], "nvk.port");
  EXPECT_NE(result.err.find("2 mistakes are in the profile."), std::string::npos) << result.err;
  std::ofstream(wrong) << "{";
  EXPECT_EQ(Json::parse(validate(wrong).out)["damaged"][0]["reason"],
            "line 1: it ends before the profile does.");
  EXPECT_EQ(box.run({"validate", wrong}).status, 66);
}

TEST_F(ProfilesTest, OptionsOfOtherCommandsAreRefused) {
  EXPECT_EQ(box.run({"set", "nvk.sound=off", "--exact"}).status, 64);
  EXPECT_EQ(box.run({"import", profile(""), "--changed-only"}).status, 64);
  EXPECT_EQ(box.run({"export", "--dry-run"}).status, 64);
  EXPECT_EQ(box.run({"import"}).status, 64);
}

}  // namespace
}  // namespace norvik::command
