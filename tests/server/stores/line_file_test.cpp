// Lines as lists of pieces.
#include "src/server/mac/stores/line_file.h"

#include <gtest/gtest.h>

namespace norvik {
namespace {

TEST(LineFileTest, PiecesAreWhatStandsBetweenWhiteSpace) {
  using Pieces = std::vector<std::string_view>;
  EXPECT_EQ(piecesOf("limit maxfiles\t12288  10240"), (Pieces{"limit", "maxfiles", "12288", "10240"}));
  EXPECT_EQ(piecesOf("  limit\xe3\x80\x80maxfiles "), (Pieces{"limit", "maxfiles"}));
  EXPECT_EQ(piecesOf("limit\rmaxfiles"), (Pieces{"limit\rmaxfiles"}));  // a line end is no white space within
  EXPECT_EQ(piecesOf("a\xff b"), (Pieces{"a\xff", "b"}));
  EXPECT_TRUE(piecesOf("").empty());
  EXPECT_TRUE(piecesOf(" \t ").empty());
}

}  // namespace
}  // namespace norvik
