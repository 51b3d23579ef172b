// Look-up in property lists and the conversions of their values.
#include "src/server/mac/platform/property_list.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace norvik {
namespace {

PropertyList integer(int64_t value) {
  return PropertyList(value);
}

bool truth(const char* text) {
  PropertyList value(text);
  return boolValue(&value);
}

struct Conversion {
  const char* what;
  PropertyList value;
  int64_t integer;
  int32_t low;
  bool truth;
};

TEST(PropertyListTest, EveryTypeConverts) {
  const Conversion kRows[] = {
      {"zero", integer(0), 0, 0, false},
      {"integer", integer(-7), -7, -7, true},
      {"beyond 32 bits", integer(0x1'0000'0005), 0x1'0000'0005, 5, true},
      {"low half zero", integer(int64_t{1} << 32), int64_t{1} << 32, 0, true},
      {"low half negative", integer(0xFFFF'FFFF), 0xFFFF'FFFF, -1, true},
      {"least", integer(INT64_MIN), INT64_MIN, 0, true},
      {"unsigned wraps", PropertyList(UINT64_MAX), -1, -1, true},
      {"unsigned half", PropertyList(uint64_t{1} << 63), INT64_MIN, 0, true},
      {"true", PropertyList(true), 1, 1, true},
      {"false", PropertyList(false), 0, 0, false},
      {"real toward zero", PropertyList(5.9), 5, 5, true},
      {"negative real toward zero", PropertyList(-5.9), -5, -5, true},
      {"fraction", PropertyList(0.5), 0, 0, true},
      {"negative zero", PropertyList(-0.0), 0, 0, false},
      {"two to the 64th", PropertyList(std::ldexp(1.0, 64)), 0, 0, true},
      {"low bits of a large real", PropertyList(std::ldexp(1.0, 64) + 4096), 4096, 4096, true},
      {"low bits of a large negative real", PropertyList(-std::ldexp(1.0, 64) - 4096), -4096, -4096, true},
      {"above the signed range", PropertyList(std::ldexp(1.0, 63)), INT64_MIN, 0, true},
      {"infinity", PropertyList(std::numeric_limits<double>::infinity()), 0, 0, true},
      {"no number", PropertyList(std::nan("")), 0, 0, true},
      {"text", PropertyList(" -12abc"), -12, -12, true},
      {"word", PropertyList("abc"), 0, 0, false},
      {"dictionary", PropertyList(), 0, 0, false},
      {"array", PropertyList(PropertyList::Array{integer(1)}), 0, 0, false},
      {"data", PropertyList(PropertyList::Data{"1"}), 0, 0, false},
      {"date", PropertyList(PropertyList::Date{1}), 0, 0, false},
  };
  for (const Conversion& row : kRows) {
    SCOPED_TRACE(row.what);
    EXPECT_EQ(integerValue(&row.value), row.integer);
    EXPECT_EQ(intValue(&row.value), row.low);
    EXPECT_EQ(boolValue(&row.value), row.truth);
  }
}

TEST(PropertyListTest, MissingValueConvertsToNothing) {
  EXPECT_EQ(integerValue(nullptr), 0);
  EXPECT_EQ(intValue(nullptr), 0);
  EXPECT_FALSE(boolValue(nullptr));
}

TEST(PropertyListTest, LeadingIntegerOfText) {
  EXPECT_EQ(leadingInteger(""), 0);
  EXPECT_EQ(leadingInteger(" \t\r\n\v\f+42 43"), 42);
  EXPECT_EQ(leadingInteger("-0012x"), -12);
  EXPECT_EQ(leadingInteger("\x08 42"), 0);  // no white space, though a control character
  EXPECT_EQ(leadingInteger("+-1"), 0);
  EXPECT_EQ(leadingInteger("- 1"), 0);
  EXPECT_EQ(leadingInteger("9223372036854775807"), INT64_MAX);
  EXPECT_EQ(leadingInteger("-9223372036854775808"), INT64_MIN);
  EXPECT_EQ(leadingInteger("18446744073709551616"), 0);
  EXPECT_EQ(leadingInteger("4294971369"), 4294971369);
  // Two to the 64th, times ten to the 20th, vanishes in 64 bits; what is added to it stays.
  EXPECT_EQ(leadingInteger("1844674407370955161600000000000000004073"), 4073);
}

TEST(PropertyListTest, TruthOfText) {
  for (const char* text : {"Y", "y", "Yes", "T", "true", "1", "9", " +1", "-1", "0001", "\t00Y", "-0T"})
    EXPECT_TRUE(truth(text)) << text;
  for (const char* text : {"", " ", "0", "000", "no", "N", "false", "+", "--1", "x1", "0.5", "on"})
    EXPECT_FALSE(truth(text)) << text;
}

TEST(PropertyListTest, FindsOnlyInDictionaries) {
  PropertyList list(PropertyList::Dictionary{{"port", integer(4073)}});
  const PropertyList& unchanged = list;
  EXPECT_EQ(integerValue(unchanged.find("port")), 4073);
  EXPECT_EQ(unchanged.find("Port"), nullptr);
  ASSERT_NE(list.find("port"), nullptr);
  *list.find("port") = integer(5000);
  EXPECT_EQ(integerValue(unchanged.find("port")), 5000);
  EXPECT_EQ(list.find(""), nullptr);
  PropertyList text("port");
  EXPECT_EQ(text.find("port"), nullptr);
  EXPECT_EQ(std::as_const(text).find("port"), nullptr);
}

TEST(PropertyListTest, TypesAreToldApart) {
  EXPECT_NE(PropertyList("a"), PropertyList(PropertyList::Data{"a"}));
  EXPECT_NE(PropertyList(true), integer(1));
  EXPECT_NE(integer(1), PropertyList(1.0));
  EXPECT_EQ(PropertyList(), PropertyList(PropertyList::Dictionary{}));
  EXPECT_NE(PropertyList(), PropertyList(PropertyList::Array{}));
}

TEST(PropertyListTest, AClampedIntegerIsTheNearestThatHas32Bits) {
  EXPECT_EQ(clampedLeadingInteger(" \t-12abc"), -12);
  EXPECT_EQ(clampedLeadingInteger("+7"), 7);
  EXPECT_EQ(clampedLeadingInteger("x"), 0);
  EXPECT_EQ(clampedLeadingInteger("2147483648"), INT32_MAX);
  EXPECT_EQ(clampedLeadingInteger("-2147483648"), INT32_MIN);
  EXPECT_EQ(clampedLeadingInteger("-2147483649"), INT32_MIN);
  EXPECT_EQ(clampedLeadingInteger(std::string(400, '9')), INT32_MAX);
}

}  // namespace
}  // namespace norvik
