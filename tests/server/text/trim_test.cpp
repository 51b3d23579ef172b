// Trimming by bytes and by Unicode characters.
#include "src/server/mac/text/trim.h"

#include <gtest/gtest.h>

namespace norvik {
namespace {

TEST(TrimTest, TrimsBothKindsAtBothEndsAndNothingWithin) {
  EXPECT_EQ(trimmed(" \t\r\n12288 10240\xe2\x80\xa8\xe3\x80\x80"), "12288 10240");
  EXPECT_EQ(trimmed("\xc2\xa0"), "");
  EXPECT_EQ(trimmed(""), "");
  EXPECT_EQ(trimmed(" \xff "), "\xff");
}

TEST(TrimTest, TakesTheGivenBytesOffTheSideThatIsAskedFor) {
  EXPECT_EQ(withoutLeading("  a b ", " "), "a b ");
  EXPECT_EQ(withoutTrailing("  a b ", " "), "  a b");
  EXPECT_EQ(trimmed("\r\n a b\t", kBlanks), "a b");
  EXPECT_EQ(trimmed("\v\f12", kCSpace), "12");
  EXPECT_EQ(trimmed("\v12", kBlanks), "\v12");
}

TEST(TrimTest, NothingIsLeftOfATextThatIsAllTrimmed) {
  EXPECT_EQ(withoutLeading("///", "/"), "");
  EXPECT_EQ(withoutTrailing("///", "/"), "");
  EXPECT_EQ(trimmed(" \t", kBlanks), "");
  EXPECT_EQ(trimmed("", kBlanks), "");
}

}  // namespace
}  // namespace norvik
