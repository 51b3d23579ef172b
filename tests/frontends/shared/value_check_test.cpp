// Checked values, kind by kind, and the words for what a setting takes.
#include "src/frontends/shared/checks/value_check.h"

#include <gtest/gtest.h>

#include <limits>

namespace norvik {
namespace {

ControlDescription control(ControlKind kind) {
  ControlDescription description;
  description.kind = kind;
  return description;
}

SettingDescription settingOf(const ControlDescription& description) {
  return {"name", {"admin", "Page"}, {&description}};
}

TEST(ValueCheckTest, WholeNumbersAndNothingElse) {
  EXPECT_EQ(wholeNumber("0"), 0);
  EXPECT_EQ(wholeNumber("-12"), -12);
  EXPECT_EQ(wholeNumber("007"), 7);
  EXPECT_EQ(wholeNumber("99999999999999999999"), std::numeric_limits<int64_t>::max());
  EXPECT_EQ(wholeNumber("-99999999999999999999"), std::numeric_limits<int64_t>::min());
  for (const char* text : {"", "-", "+1", " 1", "1 ", "1.0", "0x10", "1e3", "--1", "\xd9\xa1"}) {
    EXPECT_EQ(wholeNumber(text), std::nullopt) << text;
  }
}

TEST(ValueCheckTest, Boxes) {
  const ControlDescription box = control(ControlKind::checkBox);
  for (const char* word : {"on", "yes", "true", "1", "ON", "Yes"})
    EXPECT_EQ(checkedValue(settingOf(box), word), 1);
  for (const char* word : {"off", "no", "false", "0", "OFF"})
    EXPECT_EQ(checkedValue(settingOf(box), word), 0);
  for (const char* word : {"", "2", "-1", "mixed", "o"}) {
    EXPECT_EQ(checkedValue(settingOf(box), word), std::nullopt);
  }
  EXPECT_EQ(acceptedValues(settingOf(box)), "on or off");
}

TEST(ValueCheckTest, NumbersInTheirRange) {
  ControlDescription slider = control(ControlKind::slider);
  slider.minimum = 4;
  slider.maximum = 8;
  EXPECT_EQ(checkedValue(settingOf(slider), "4"), 4);
  EXPECT_EQ(checkedValue(settingOf(slider), "8"), 8);
  EXPECT_EQ(checkedValue(settingOf(slider), " 5\t"), 5);
  for (const char* text : {"3", "9", "5.5", "", " ", "5 6", "99999999999999999999"}) {
    EXPECT_EQ(checkedValue(settingOf(slider), text), std::nullopt) << text;
  }
  EXPECT_EQ(acceptedValues(settingOf(slider)), "a whole number from 4 to 8");
}

TEST(ValueCheckTest, ItemsByTextOrNumber) {
  ControlDescription popUp = control(ControlKind::popUp);
  popUp.items = {"15 minutes", "1 hour", "1 day"};
  EXPECT_EQ(checkedValue(settingOf(popUp), "1 hour"), 1);
  EXPECT_EQ(checkedValue(settingOf(popUp), "15-Minutes"), 0);
  EXPECT_EQ(checkedValue(settingOf(popUp), "1"), 0);
  EXPECT_EQ(checkedValue(settingOf(popUp), "3"), 2);
  for (const char* text : {"0", "4", "-1", "hour", ""}) {
    EXPECT_EQ(checkedValue(settingOf(popUp), text), std::nullopt) << text;
  }
  EXPECT_EQ(acceptedValues(settingOf(popUp)), "15 minutes, 1 hour or 1 day");
}

TEST(ValueCheckTest, Choices) {
  ControlDescription first = control(ControlKind::radioButton), second = first;
  first.choice = "console";
  second.choice = "lock";
  const SettingDescription setting{"connect.action", {"admin", "Page"}, {&first, &second}};
  EXPECT_EQ(checkedValue(setting, "console"), 0);
  EXPECT_EQ(checkedValue(setting, "Lock"), 1);
  EXPECT_EQ(checkedValue(setting, "1"), std::nullopt);
  EXPECT_EQ(acceptedValues(setting), "console or lock");
}

TEST(ValueCheckTest, ListsInWords) {
  EXPECT_EQ(listInWords({}, "or"), "");
  EXPECT_EQ(listInWords({"a"}, "or"), "a");
  EXPECT_EQ(listInWords({"a", "b"}, "and"), "a and b");
  EXPECT_EQ(listInWords({"a", "b", "c"}, "or"), "a, b or c");
}

}  // namespace
}  // namespace norvik
