// The little of Unicode that line files need: which bytes are a character, white space, a line end; pieces.
#include "src/server/mac/text/utf8.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "src/server/mac/stores/line_file.h"

namespace norvik {
namespace {

struct Sequence {
  std::string_view bytes;
  char32_t code;
};

TEST(UnicodeTest, ReadsTheFirstAndTheLastCharacterOfEachForm) {
  using namespace std::string_view_literals;
  const Sequence sequences[] = {
      {"\0"sv, 0},
      {"\x7f"sv, 0x7f},
      {"\xc2\x80"sv, 0x80},
      {"\xdf\xbf"sv, 0x7ff},
      {"\xe0\xa0\x80"sv, 0x800},
      {"\xed\x9f\xbf"sv, 0xd7ff},
      {"\xee\x80\x80"sv, 0xe000},
      {"\xef\xbf\xbf"sv, 0xffff},
      {"\xf0\x90\x80\x80"sv, 0x10000},
      {"\xf4\x8f\xbf\xbf"sv, 0x10ffff},
  };
  for (const Sequence& sequence : sequences) {
    const auto character = firstCharacter(std::string(sequence.bytes) + "x");
    ASSERT_TRUE(character) << uint32_t{sequence.code};
    EXPECT_EQ(character->code, sequence.code);
    EXPECT_EQ(character->length, sequence.bytes.size()) << uint32_t{sequence.code};
  }
}

TEST(UnicodeTest, KnowsWhatIsNoCharacter) {
  const std::string_view wrong[] = {
      "",                  // nothing
      "\x80",              // a later byte first
      "\xc2",              // cut short
      "\xc2x",             // not followed up
      "\xe2\x82",          // cut short
      "\xf0\x9f\x98",      // cut short
      "\xc0\xaf",          // longer than needed
      "\xe0\x80\x80",      // longer than needed
      "\xf0\x80\x80\x80",  // longer than needed
      "\xed\xa0\x80",      // half of a pair
      "\xed\xbf\xbf",      // half of a pair
      "\xf4\x90\x80\x80",  // above the last
      "\xf8\x88\x80\x80",  // no form
      "\xff",              // no form
  };
  for (const std::string_view text : wrong) {
    EXPECT_FALSE(firstCharacter(text)) << testing::PrintToString(text);
    if (!text.empty()) {
      EXPECT_FALSE(isUtf8(std::string("a") + std::string(text))) << testing::PrintToString(text);
    }
  }
  EXPECT_TRUE(isUtf8(""));
  EXPECT_TRUE(isUtf8("a\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80"));
}

TEST(UnicodeTest, WhiteSpaceIsTheTabAndTheSpaceSeparators) {
  for (const char32_t code :
       {U'\x09', U'\x20', U'\xa0', U'\x1680', U'\x2000', U'\x200a', U'\x202f', U'\x205f', U'\x3000'})
    EXPECT_TRUE(isWhiteSpace(code)) << uint32_t{code};
  for (const char32_t code : {U'\x00', U'\x0a', U'\x0b', U'\x0d', U'\x1f', U'\x21', U'\x85', U'\x180e',
                              U'\x200b', U'\x2028', U'\xfeff'})
    EXPECT_FALSE(isWhiteSpace(code)) << uint32_t{code};
}

TEST(UnicodeTest, LineEndsAreSeven) {
  int count = 0;
  for (char32_t code = 0; code <= 0x10ffff; ++code) count += isLineEnd(code) ? 1 : 0;
  EXPECT_EQ(count, 7);
  for (const char32_t code : {U'\x0a', U'\x0b', U'\x0c', U'\x0d', U'\x85', U'\x2028', U'\x2029'})
    EXPECT_TRUE(isLineEnd(code)) << uint32_t{code};
}

TEST(UnicodeTest, TrimsBothKindsAtBothEndsAndNothingWithin) {
  EXPECT_EQ(trimmed(" \t\r\n12288 10240\xe2\x80\xa8\xe3\x80\x80"), "12288 10240");
  EXPECT_EQ(trimmed("\xc2\xa0"), "");
  EXPECT_EQ(trimmed(""), "");
  EXPECT_EQ(trimmed(" \xff "), "\xff");
}

TEST(UnicodeTest, CountsUtf16Units) {
  EXPECT_EQ(utf16Length(""), 0u);
  EXPECT_EQ(utf16Length("a\xc3\xa9\xe2\x82\xac"), 3u);
  EXPECT_EQ(utf16Length("\xf0\x9f\x98\x80"), 2u);
  EXPECT_EQ(utf16Length("\xff\xfe"), 2u);
}

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
