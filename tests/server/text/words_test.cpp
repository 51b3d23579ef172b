// Joining words, how far two words are apart, and words with bytes that do not print.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "src/server/mac/text/edit_distance.h"
#include "src/server/mac/text/escape.h"
#include "src/server/mac/text/join.h"

namespace norvik {
namespace {

using namespace std::string_view_literals;

TEST(JoinTest, PutsTheSeparatorBetweenTheElementsAlone) {
  EXPECT_EQ(joined(std::vector<std::string>{}, ", "), "");
  EXPECT_EQ(joined(std::vector<std::string>{"a"}, ", "), "a");
  EXPECT_EQ(joined(std::vector<std::string_view>{"", "b", ""}, ", "), ", b, ");
}

TEST(JoinTest, TakesTheTextOfAnElementFromAMemberOrAFunction) {
  struct Named {
    std::string name;
  };
  const std::vector<Named> named{{"x"}, {"y"}};
  EXPECT_EQ(joined(named, "+", &Named::name), "x+y");
  EXPECT_EQ(joined(std::vector<int>{1, 22}, " ", [](int n) { return std::to_string(n); }), "1 22");
}

struct Distance {
  std::string_view a, b;
  std::size_t edits;
};

TEST(EditDistanceTest, CountsAdditionsRemovalsReplacementsAndSwaps) {
  const Distance distances[] = {
      {"", "", 0},           {"", "abc", 3},         {"start", "start", 0},
      {"strt", "start", 1},  {"starrt", "start", 1}, {"stsrt", "start", 1},
      {"satrt", "start", 1}, {"tsrat", "start", 2},  {"quit", "stop", 4},
  };
  for (const Distance& distance : distances) {
    EXPECT_EQ(editDistance(distance.a, distance.b), distance.edits) << distance.a << ' ' << distance.b;
    EXPECT_EQ(editDistance(distance.b, distance.a), distance.edits) << distance.b << ' ' << distance.a;
  }
}

TEST(EscapeTest, PrintableCharactersStayAndAllElseIsEscaped) {
  EXPECT_EQ(escaped("a \xc3\xa9\xc2\xa0\xf0\x9f\x98\x80~"), "a \xc3\xa9\xc2\xa0\xf0\x9f\x98\x80~");
  EXPECT_EQ(escaped("\n\r\t\"\\"), "\\n\\r\\t\\\"\\\\");
  EXPECT_EQ(escaped("\0\x1f\x7f"sv), "\\x00\\x1f\\x7f");
  EXPECT_EQ(escaped("\xc2\x85"), "\\xc2\\x85");  // a control character of two bytes
  EXPECT_EQ(escaped("\xff\xe2\x82z"), "\\xff\\xe2\\x82z");
  EXPECT_EQ(quoted("a\nb"), "\"a\\nb\"");
}

}  // namespace
}  // namespace norvik
