// The word that a misspelt one was probably meant to be, and text in columns.
#include "src/frontends/shared/checks/nearest.h"

#include <gtest/gtest.h>

#include <sstream>

#include "src/frontends/command/table.h"

namespace norvik::command {
namespace {

TEST(NearestTest, OneLetterWrongMissingTooManyOrSwapped) {
  const std::vector<std::string> known{"start", "stop", "status"};
  for (const char* typed : {"stsrt", "strt", "starrt", "satrt"})
    EXPECT_EQ(nearestWord(typed, known), "start");
  EXPECT_EQ(nearestWord("stpo", known), "stop");
}

TEST(NearestTest, AnotherWordIsNotNear) {
  EXPECT_EQ(nearestWord("quit", {"start", "stop"}), "");
  EXPECT_EQ(nearestWord("x", {"a"}), "");
  EXPECT_EQ(suggestion("quit", {"start"}), "");
  EXPECT_EQ(suggestion("sart", {"start"}), " Did you mean \"start\"?");
}

TEST(TableTest, ColumnsAreAsWideAsTheirWidestCell) {
  std::ostringstream out;
  writeTable(
      out,
      {{"a", "long cell", "x"}, {}, {"A heading that is wider than the column"}, {"ab", "b"}, {"", "", "y"}},
      2);
  EXPECT_EQ(out.str(),
            "  a   long cell  x\n"
            "\n"
            "  A heading that is wider than the column\n"
            "  ab  b\n"
            "                 y\n");
}

TEST(TableTest, CharactersCountNotBytes) {
  std::ostringstream out;
  writeTable(out, {{"\xc3\xa9", "x"}, {"ee", "y"}});
  EXPECT_EQ(out.str(), "\xc3\xa9   x\nee  y\n");
}

}  // namespace
}  // namespace norvik::command
