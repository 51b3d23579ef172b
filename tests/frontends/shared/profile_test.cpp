// Profiles as texts: what is read, what is refused and on which line, and what is written.
#include "src/frontends/shared/profile/profile.h"

#include <gtest/gtest.h>

#include "tests/support/shipped_interface.h"

namespace norvik {
namespace {

class ProfileTest : public testing::Test {
 protected:
  ProfileReading read(const std::string& text) const { return readProfile(text, settings); }
  // With these lines as the settings.
  ProfileReading readSettings(const std::string& lines) const {
    return read("{\"norvikProfile\": 1, \"settings\": {" + lines + "}}");
  }
  // The one fault, with its line; every fault where there is not one.
  static std::string faultOf(const ProfileReading& reading) {
    std::string all;
    for (const ProfileFault& fault : reading.faults) all += (all.empty() ? "" : "|") + fault.withLine();
    return all;
  }
  void expectUnreadable(const std::string& text, const std::string& sentence) const {
    const ProfileReading reading = read(text);
    EXPECT_EQ(faultOf(reading), sentence);
    ASSERT_EQ(reading.faults.size(), 1U) << text;
    EXPECT_TRUE(reading.faults[0].unreadable) << text;
  }
  void expectWrong(const std::string& lines, const std::string& key, const std::string& sentence) const {
    const ProfileReading reading = readSettings(lines);
    EXPECT_EQ(faultOf(reading), sentence);
    ASSERT_EQ(reading.faults.size(), 1U) << lines;
    EXPECT_FALSE(reading.faults[0].unreadable) << lines;
    EXPECT_EQ(reading.faults[0].key, key);
  }

  InterfaceDescription interface = shippedInterface();
  std::vector<SettingDescription> settings = settingsOf(interface);
};

TEST_F(ProfileTest, EachKindOfSettingIsReadWithItsType) {
  const ProfileReading reading = readSettings(
      R"("nvk.port": 5000, "nvk.sound": false, "rdp.sound": true, "image.quality": "Low",
         "notify.repeat": "15 minutes", "connect.action": "lock", "user.image.shadow": 0)");
  EXPECT_EQ(faultOf(reading), "");
  EXPECT_EQ(reading.settings, (ProfileSettings{{"nvk.port", 5000},
                                               {"nvk.sound", 0},
                                               {"rdp.sound", 1},
                                               {"image.quality", 0},
                                               {"notify.repeat", 0},
                                               {"connect.action", 1},
                                               {"user.image.shadow", 0}}));
}

TEST_F(ProfileTest, AChoiceMayBeNone) {
  EXPECT_EQ(readSettings(R"("connect.action": "none")").settings,
            (ProfileSettings{{"connect.action", kNoChoice}}));
}

TEST_F(ProfileTest, ADescriptionAndASchemaAreFree) {
  EXPECT_EQ(faultOf(read(R"({"$schema": "x", "norvikProfile": 1, "description": "y", "settings": {}})")), "");
  EXPECT_EQ(faultOf(read("\xef\xbb\xbf{\"norvikProfile\": 1, \"settings\": {}}")), "");
}

TEST_F(ProfileTest, AnUnknownSettingIsNamedWithTheNearestOne) {
  expectWrong("\n\n\"nvk.prot\": 5000", "nvk.prot",
              "line 3: unknown setting \"nvk.prot\". Did you mean \"nvk.port\"?");
  expectWrong("\"LicenseHolder\": \"x\"", "LicenseHolder", "line 1: unknown setting \"LicenseHolder\".");
}

TEST_F(ProfileTest, AnUnknownKeyIsNamedWithTheNearestOne) {
  const ProfileReading reading = read("{\"norvikProfile\": 1,\n\"setings\": {}, \"settings\": {}}");
  EXPECT_EQ(faultOf(reading), "line 2: unknown key \"setings\". Did you mean \"settings\"?");
}

TEST_F(ProfileTest, AValueOfAnotherTypeOrOutOfRangeIsRefused) {
  const std::string port = "line 1: nvk.port takes a whole number from 1 to 65535, not ";
  for (const char* value :
       {"\"5000\"", "true", "null", "5000.0", "0", "70000", "-1", "18446744073709551615"}) {
    expectWrong(std::string("\"nvk.port\": ") + value, "nvk.port", port + value + ".");
  }
  expectWrong("\"nvk.port\": [5000]", "nvk.port", port + "a list.");
  expectWrong("\"nvk.port\": {\"a\": {\"nvk.sound\": 3}}", "nvk.port", port + "an object.");
  for (const char* value : {"\"on\"", "1", "null"}) {
    expectWrong(std::string("\"nvk.sound\": ") + value, "nvk.sound",
                std::string("line 1: nvk.sound takes true or false, not ") + value + ".");
  }
  for (const char* value : {"1", "\"1\"", "\"Best\"", "true", "\"none\""}) {
    expectWrong(std::string("\"image.quality\": ") + value, "image.quality",
                std::string("line 1: image.quality takes Low, Medium or High, not ") + value + ".");
  }
}

TEST_F(ProfileTest, ALongValueIsCutInTheMessage) {
  std::string umlauts;
  for (int i = 0; i < 500; ++i) umlauts += "\xc3\xa4";
  const std::string sentence = readSettings("\"nvk.sound\": \"" + umlauts + "\"").faults.at(0).sentence;
  EXPECT_LT(sentence.size(), 120U);
  EXPECT_TRUE(sentence.ends_with("\xc3\xa4....")) << sentence;
}

TEST_F(ProfileTest, AKeyIsGivenOnce) {
  expectWrong("\"nvk.sound\": true,\n\"nvk.sound\": true", "nvk.sound",
              "line 2: \"nvk.sound\" is given twice.");
  EXPECT_EQ(faultOf(read(R"({"norvikProfile": 1, "norvikProfile": 1, "settings": {}})")),
            "line 1: \"norvikProfile\" is given twice.");
  EXPECT_EQ(faultOf(read("{\"norvikProfile\": 1, \"settings\": {},\n \"settings\": {}}")),
            "line 2: \"settings\" is given twice.");
}

TEST_F(ProfileTest, EveryFaultIsNamedInItsOrder) {
  EXPECT_EQ(faultOf(readSettings("\"a\": 1,\n\"nvk.port\": 0,\n\"nvk.port\": 1")),
            "line 1: unknown setting \"a\".|"
            "line 2: nvk.port takes a whole number from 1 to 65535, not 0.|"
            "line 3: \"nvk.port\" is given twice.");
}

TEST_F(ProfileTest, AfterAHundredFaultsNoMoreAreLookedFor) {
  std::string lines = "\"b\": 1";
  for (int i = 0; i < 300; ++i) lines += ", \"b" + std::to_string(i) + "\": 1";
  const ProfileReading reading = readSettings(lines);
  EXPECT_EQ(reading.faults.size(), 101U);
  EXPECT_EQ(reading.faults.back().sentence, "there may be more; no more were looked for.");
}

TEST_F(ProfileTest, AnotherVersionIsTheOnlyThingThatIsSaid) {
  const std::string rest = "; this program reads version 1.";
  expectUnreadable("{\"settings\": {\"new\": 1},\n\"norvikProfile\": 2}",
                   "line 2: \"norvikProfile\" is the format's version, which is 2" + rest);
  for (const char* version : {"0", "1.0", "\"1\"", "true", "null"}) {
    expectUnreadable(
        std::string("{\"norvikProfile\": ") + version + ", \"settings\": {}}",
        std::string("line 1: \"norvikProfile\" is the format's version, which is ") + version + rest);
  }
}

TEST_F(ProfileTest, WhatIsNoProfile) {
  expectUnreadable("", "it is empty.");
  expectUnreadable(" \n\t", "it is empty.");
  expectUnreadable("{}", "it is no profile: \"norvikProfile\" is missing.");
  expectUnreadable("{\"settings\": {}}", "it is no profile: \"norvikProfile\" is missing.");
  expectUnreadable("[1]", "line 1: a profile is an object, not a list.");
  expectUnreadable("\"x\"", "line 1: a profile is an object, not \"x\".");
  EXPECT_EQ(faultOf(read("{\"norvikProfile\": 1}")), "\"settings\" is missing.");
  EXPECT_EQ(faultOf(read("{\"norvikProfile\": 1, \"settings\": [\"nvk.port\"]}")),
            "line 1: \"settings\" takes an object, not a list.");
}

TEST_F(ProfileTest, TextThatIsNoJsonIsRefusedWithItsLine) {
  expectUnreadable("{\"norvikProfile\": 1,\n\"settings\": {\"nvk.port\": tru\n}}",
                   "line 2: it is no JSON at \"\"nvk.port\": tru<U+000A>\".");
  expectUnreadable("{\"norvikProfile\": 1,\n\"settings\": {\n", "line 3: it ends before the profile does.");
  expectUnreadable("{\"norvikProfile\": 1, \"settings\": {}} x",
                   "line 1: it is no JSON at \"\"settings\": {}} x\".");
  expectUnreadable("{\"norvikProfile\": 1,\n\n\"description\": \"\xff\", \"settings\": {}}",
                   "line 3: it is not UTF-8.");
  expectUnreadable(std::string("{\"norvikProfile\": 1, \"settings\": {}}\n\0x", 40),
                   "line 2: it has a zero byte.");
}

TEST_F(ProfileTest, ALargeOrDeepTextIsRefused) {
  expectUnreadable(std::string(kMaxProfileBytes + 1, ' '), "it is too large for a profile.");
  const std::string deep(100'000, '[');
  EXPECT_FALSE(readSettings("\"nvk.port\": " + deep).faults.empty());
  expectUnreadable(deep, "line 1: a profile is an object, not a list.");
}

TEST_F(ProfileTest, WhatIsWrittenIsReadAgain) {
  const std::string text = profileText(
      {{"nvk.port", int64_t{5000}}, {"nvk.sound", false}, {"image.quality", std::string("Medium")}});
  EXPECT_EQ(text,
            "{\n  \"norvikProfile\": 1,\n  \"settings\": {\n    \"nvk.port\": 5000,\n"
            "    \"nvk.sound\": false,\n    \"image.quality\": \"Medium\"\n  }\n}\n");
  EXPECT_EQ(read(text).settings,
            (ProfileSettings{{"nvk.port", 5000}, {"nvk.sound", 0}, {"image.quality", 1}}));
  EXPECT_EQ(faultOf(read(profileText({}))), "");
}

TEST_F(ProfileTest, AProfileIsToldFromAPropertyList) {
  for (const char* text : {"{\"norvikProfile\": 1", " \n{ \"a\" :", "\xef\xbb\xbf{\"a\":"})
    EXPECT_TRUE(isProfileText(text)) << text;
  for (const char* text :
       {"", "{", "{}", "{\"a\"", "{\"a", "{ \"a\" = \"b\"; }", "{ a = b; }", "<?xml", "bplist00"})
    EXPECT_FALSE(isProfileText(text)) << text;
}

}  // namespace
}  // namespace norvik
