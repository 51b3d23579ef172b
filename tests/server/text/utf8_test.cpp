// Which bytes are a character, and which characters are white space or line ends.
#include "src/server/mac/text/utf8.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace norvik {
namespace {

struct Sequence {
  std::string_view bytes;
  char32_t code;
};

TEST(Utf8Test, ReadsTheFirstAndTheLastCharacterOfEachForm) {
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

TEST(Utf8Test, KnowsWhatIsNoCharacter) {
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

TEST(Utf8Test, WhiteSpaceIsTheTabAndTheSpaceSeparators) {
  for (const char32_t code :
       {U'\x09', U'\x20', U'\xa0', U'\x1680', U'\x2000', U'\x200a', U'\x202f', U'\x205f', U'\x3000'})
    EXPECT_TRUE(isWhiteSpace(code)) << uint32_t{code};
  for (const char32_t code : {U'\x00', U'\x0a', U'\x0b', U'\x0d', U'\x1f', U'\x21', U'\x85', U'\x180e',
                              U'\x200b', U'\x2028', U'\xfeff'})
    EXPECT_FALSE(isWhiteSpace(code)) << uint32_t{code};
}

TEST(Utf8Test, LineEndsAreSeven) {
  int count = 0;
  for (char32_t code = 0; code <= 0x10ffff; ++code) count += isLineEnd(code) ? 1 : 0;
  EXPECT_EQ(count, 7);
  for (const char32_t code : {U'\x0a', U'\x0b', U'\x0c', U'\x0d', U'\x85', U'\x2028', U'\x2029'})
    EXPECT_TRUE(isLineEnd(code)) << uint32_t{code};
}

TEST(Utf8Test, CountsUtf16Units) {
  EXPECT_EQ(utf16Length(""), 0u);
  EXPECT_EQ(utf16Length("a\xc3\xa9\xe2\x82\xac"), 3u);
  EXPECT_EQ(utf16Length("\xf0\x9f\x98\x80"), 2u);
  EXPECT_EQ(utf16Length("\xff\xfe"), 2u);
}

TEST(Utf8Test, CountsCharactersAndTakesAByteThatIsNoneForOne) {
  EXPECT_EQ(characterCount(""), 0u);
  EXPECT_EQ(characterCount("a\xc3\xa9\xf0\x9f\x98\x80"), 3u);
  EXPECT_EQ(characterCount("\xff\xe2\x82"), 3u);
}

TEST(Utf8Test, WritesTheFirstAndTheLastCharacterOfEachFormAsItIsRead) {
  for (const char32_t code : {U'\0', U'\x7f', U'\x80', U'\x7ff', U'\x800', U'\xd7ff', U'\xe000', U'\xffff',
                              U'\x10000', U'\x10ffff'}) {
    std::string text = "a";
    appendCharacter(text, code);
    std::string_view rest = std::string_view(text).substr(1);
    EXPECT_EQ(takeCharacter(rest), code) << uint32_t{code};
    EXPECT_TRUE(rest.empty()) << uint32_t{code};
  }
}

TEST(Utf8Test, TakesOneByteOfWhatIsNoCharacter) {
  std::string_view text = "\xe2\x82z";
  EXPECT_EQ(takeCharacter(text), std::nullopt);
  EXPECT_EQ(text, "\x82z");
}

TEST(Utf8Test, HalvesOfAPairAndWhatLiesAboveTheLastAreNoCharacters) {
  for (const char32_t code : {0x0u, 0xd7ffu, 0xe000u, 0x10ffffu}) EXPECT_TRUE(isScalar(code));
  for (const char32_t code : {0xd800u, 0xdbffu, 0xdc00u, 0xdfffu, 0x110000u}) EXPECT_FALSE(isScalar(code));
}

}  // namespace
}  // namespace norvik
