// What is found by which words, in which order, over the interface as it is shipped.
#include "src/frontends/shared/search/setting_search.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/shipped_interface.h"

namespace norvik {
namespace {

using Names = std::vector<std::string>;

class SettingSearchTest : public testing::Test {
 protected:
  // A page as its group and title, a setting as its name.
  Names found(std::string_view text) const {
    Names names;
    for (const SearchHit& hit :
         findSettings(interface, text, [this](const auto& name) { return value(name); }))
      names.push_back(hit.name.empty() ? hit.page.group + ":" + hit.page.title : hit.name);
    return names;
  }
  bool finds(std::string_view text, const std::string& name) const {
    return std::ranges::count(found(text), name) == 1;
  }
  std::optional<std::string> value(const std::string& name) const {
    if (name == "system.opengl") return std::nullopt;
    return name == valued ? shown : "";
  }

  InterfaceDescription interface = shippedInterface();
  std::string valued, shown;
};

TEST_F(SettingSearchTest, ByLabelNameSynonymItemAndHelp) {
  EXPECT_TRUE(finds("swap", "user.mouse.swap"));
  EXPECT_TRUE(finds("rdp.port", "rdp.port"));
  EXPECT_TRUE(finds("speed", "image.quality"));
  EXPECT_TRUE(finds("3389", "rdp.port"));
  EXPECT_FALSE(finds("3389", "nvk.port"));
  EXPECT_TRUE(finds("medium", "user.image.quality"));
  EXPECT_TRUE(finds("network", "image.quality"));
}

TEST_F(SettingSearchTest, ByTheValueThatIsShownNow) {
  EXPECT_FALSE(finds("5999", "nvk.port"));
  valued = "nvk.port";
  shown = "5999";
  EXPECT_EQ(found("5999"), Names{"nvk.port"});
}

TEST_F(SettingSearchTest, TheBestComeFirst) {
  EXPECT_EQ(found("mouse").front(), "user:Mouse");
  EXPECT_EQ(found("clipboard").front(), "nvk.clipboard");
  const Names image = found("image");
  EXPECT_EQ(Names(image.begin(), image.begin() + 2), (Names{"user:Image", "admin:Image"}));
}

TEST_F(SettingSearchTest, EveryWordMustBeFoundInAnyOrder) {
  EXPECT_TRUE(finds("rdp sound", "rdp.sound"));
  EXPECT_TRUE(finds("SOUND rdp", "rdp.sound"));
  EXPECT_FALSE(finds("rdp sound", "nvk.sound"));
}

TEST_F(SettingSearchTest, OneTypingErrorIsForgivenInLongerWords) {
  for (const char* wrong : {"clipbaord", "clpboard", "clipbboard", "clipdoard"})
    EXPECT_TRUE(finds(wrong, "nvk.clipboard")) << wrong;
  EXPECT_FALSE(finds("clxxboard", "nvk.clipboard"));
  EXPECT_EQ(found("xpo"), Names{});
}

TEST_F(SettingSearchTest, NothingIsFoundByNothing) {
  EXPECT_EQ(found(""), Names{});
  EXPECT_EQ(found(" .,- "), Names{});
  EXPECT_EQ(found("zzzz"), Names{});
  EXPECT_EQ(found(std::string(100'000, 'x')), Names{});
}

TEST_F(SettingSearchTest, WhatNobodySeesIsNotFound) {
  EXPECT_FALSE(finds("opengl", "system.opengl"));
}

TEST_F(SettingSearchTest, EverySettingIsFoundByItsLabelAndItsName) {
  for (const SettingDescription& setting : settingsOf(interface)) {
    if (!value(setting.name)) continue;
    EXPECT_TRUE(finds(setting.name, setting.name)) << setting.name;
    EXPECT_TRUE(finds(labelOf(setting, interface), setting.name)) << setting.name;
    bool hasSynonym = false;
    for (const ControlDescription* control : setting.controls) {
      for (const std::string& synonym : control->synonyms) {
        hasSynonym = true;
        EXPECT_TRUE(finds(synonym, setting.name)) << synonym;
      }
    }
    EXPECT_TRUE(hasSynonym) << setting.name;
  }
}

}  // namespace
}  // namespace norvik
