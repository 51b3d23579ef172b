// The property-list codec: every type through both writers, the forms that other programs write, and damage.
#include "src/adapters/property_lists/codec.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "tests/support/limited_memory.h"

namespace norvik {
namespace {

using namespace std::string_literals;

PropertyList integer(int64_t value) {
  return PropertyList(value);
}

PropertyList date(double seconds) {
  return PropertyList(PropertyList::Date{seconds});
}

PropertyList data(std::string bytes) {
  return PropertyList(PropertyList::Data{std::move(bytes)});
}

// One of everything, all of which both formats hold to the last bit.
PropertyList everything() {
  PropertyList::Array numbers;
  for (int64_t value : {INT64_MIN, INT64_MIN + 1, int64_t{INT32_MIN} - 1, int64_t{-1}, int64_t{0},
                        int64_t{127}, int64_t{128}, int64_t{255}, int64_t{256}, int64_t{65535},
                        int64_t{65536}, int64_t{UINT32_MAX}, int64_t{UINT32_MAX} + 1, INT64_MAX})
    numbers.push_back(value);
  numbers.push_back(static_cast<uint64_t>(INT64_MAX) + 1);
  numbers.push_back(UINT64_MAX);
  PropertyList::Array reals;
  for (double value : {0.0, -0.0, 0.1, 1.0 / 3, 1.0, -2.5, 1e22, 1e23, 123456789012345680.0, 5e-324,
                       2.2250738585072011e-308, std::numeric_limits<double>::max(),
                       std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()})
    reals.push_back(value);
  PropertyList::Array dates;
  for (double seconds :
       {0.0, -1.0, 86399.0, -86401.0, 1e9, -978307200.0, 63113904000.0, -63114076800.0, 9e15, -9e15})
    dates.push_back(date(seconds));
  PropertyList::Array texts;
  for (const std::string& text :
       {""s, " leading and trailing "s, "a\nb\tc"s, "carriage\rreturn\r\n"s, "<&>\"'"s, "]]>"s, "&amp;"s,
        "\0nul\x01\x1F\x7F"s, "\xC3\xA4 \xE2\x82\xAC \xF0\x9F\x98\x80"s, "\xEF\xBF\xBE \xEF\xBB\xBF"s,
        std::string(300, 'x')})
    texts.push_back(text);
  PropertyList::Array bytes;
  std::string all;
  for (int i = 0; i < 256; ++i) all += static_cast<char>(static_cast<unsigned char>(i));
  for (const std::string& content : {""s, "\0"s, "ab"s, "abc"s, all}) bytes.push_back(data(content));
  PropertyList::Dictionary root{{"numbers", std::move(numbers)},
                                {"reals", std::move(reals)},
                                {"dates", std::move(dates)},
                                {"texts", std::move(texts)},
                                {"data", std::move(bytes)},
                                {"yes", true},
                                {"no", false},
                                {"empty dictionary", PropertyList()},
                                {"empty array", PropertyList::Array{}},
                                {"", "empty key"},
                                {"\xE2\x82\xAC <&>\r\x02", "odd key"},
                                {"uid", PropertyList::Dictionary{{"CF$UID", integer(300)}}}};
  root["nested"] = PropertyList::Array{PropertyList(root), PropertyList::Array{PropertyList::Array{}}};
  return root;
}

// Lists compare equal when a negative zero became a positive one, so bits are compared apart.
uint64_t bitsOf(const PropertyList& real) {
  return std::bit_cast<uint64_t>(*real.as<double>());
}

PropertyList decoded(std::string_view bytes) {
  auto list = decodePropertyList(bytes);
  EXPECT_TRUE(list) << bytes;
  return list.value_or(PropertyList("nothing was read"));
}

PropertyList decodedXml(const std::string& body) {
  return decoded("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + body + "</plist>\n");
}

bool isDamaged(std::string_view bytes) {
  return !decodePropertyList(bytes);
}

TEST(CodecTest, EveryTypeSurvivesXml) {
  EXPECT_EQ(decoded(encodeXmlPropertyList(everything())), everything());
}

TEST(CodecTest, EveryTypeSurvivesBinary) {
  EXPECT_EQ(decoded(encodeBinaryPropertyList(everything())), everything());
}

TEST(CodecTest, AnyTypeMayBeTheRoot) {
  for (const PropertyList& root :
       {PropertyList("text"), integer(-1), PropertyList(UINT64_MAX), PropertyList(true), PropertyList(0.5),
        date(-1), data("\xFF"), PropertyList(PropertyList::Array{})}) {
    EXPECT_EQ(decoded(encodeXmlPropertyList(root)), root);
    EXPECT_EQ(decoded(encodeBinaryPropertyList(root)), root);
  }
}

TEST(CodecTest, RealsSurviveToTheLastBit) {
  std::mt19937_64 random(20100131);
  for (int i = 0; i < 20000; ++i) {
    auto bits = random();
    PropertyList real(std::bit_cast<double>(bits));
    if (std::isnan(*real.as<double>())) continue;
    ASSERT_EQ(bitsOf(decoded(encodeXmlPropertyList(real))), bits);
    ASSERT_EQ(bitsOf(decoded(encodeBinaryPropertyList(real))), bits);
  }
  EXPECT_EQ(bitsOf(decoded(encodeXmlPropertyList(-0.0))), bitsOf(-0.0));
  EXPECT_TRUE(std::isnan(*decoded(encodeXmlPropertyList(std::nan(""))).as<double>()));
  EXPECT_TRUE(std::isnan(*decoded(encodeBinaryPropertyList(std::nan(""))).as<double>()));
}

TEST(CodecTest, DatesSurviveInEveryYear) {
  std::mt19937_64 random(1);
  std::uniform_int_distribution<int64_t> seconds(-100'000'000'000, 100'000'000'000);
  for (int i = 0; i < 20000; ++i) {
    PropertyList moment = date(static_cast<double>(seconds(random)));
    ASSERT_EQ(decoded(encodeXmlPropertyList(moment)), moment) << encodeXmlPropertyList(moment);
  }
}

TEST(CodecTest, FractionOfASecondIsDroppedFromXmlOnly) {
  EXPECT_EQ(decoded(encodeXmlPropertyList(date(1.75))), date(1));
  EXPECT_EQ(decoded(encodeXmlPropertyList(date(-0.25))), date(-1));
  EXPECT_EQ(decoded(encodeBinaryPropertyList(date(-0.25))), date(-0.25));
}

TEST(CodecTest, WritesTheXmlFormat) {
  PropertyList list(PropertyList::Dictionary{{"b", PropertyList::Array{integer(1), PropertyList(1.0)}},
                                             {"a", PropertyList()},
                                             {"c", data("abc")},
                                             {"d", date(-978307200.0)},
                                             {"e", "1 < 2\r"},
                                             {"f", UINT64_MAX}});
  EXPECT_EQ(encodeXmlPropertyList(list),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
            "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
            "<plist version=\"1.0\">\n"
            "<dict>\n"
            "\t<key>a</key>\n\t<dict/>\n"
            "\t<key>b</key>\n\t<array>\n\t\t<integer>1</integer>\n\t\t<real>1.0</real>\n\t</array>\n"
            "\t<key>c</key>\n\t<data>\n\tYWJj\n\t</data>\n"
            "\t<key>d</key>\n\t<date>1970-01-01T00:00:00Z</date>\n"
            "\t<key>e</key>\n\t<string>1 &lt; 2&#13;</string>\n"
            "\t<key>f</key>\n\t<integer>18446744073709551615</integer>\n"
            "</dict>\n"
            "</plist>\n");
}

TEST(CodecTest, WhatIsNoTextIsWrittenAsReplacementCharacters) {
  PropertyList broken(std::string("a\xFF\xC3"));
  EXPECT_EQ(decoded(encodeXmlPropertyList(broken)), PropertyList("a\xEF\xBF\xBD\xEF\xBF\xBD"));
  EXPECT_EQ(decoded(encodeBinaryPropertyList(broken)), PropertyList("a\xEF\xBF\xBD\xEF\xBF\xBD"));
}

TEST(XmlTest, ReadsWhatOthersWrite) {
  EXPECT_EQ(decodedXml("<string>1<!-- 2 -->3<![CDATA[<&4]]>&#x41;&#66;&amp;&lt;&gt;&quot;&apos;</string>"),
            PropertyList("13<&4AB&<>\"'"));
  EXPECT_EQ(
      decodedXml("<array><string/><dict/><array/><data/><true></true><false />\n<!-- --><?x y?></array>"),
      PropertyList(PropertyList::Array{PropertyList(""), PropertyList(), PropertyList::Array{}, data(""),
                                       true, false}));
  EXPECT_EQ(decodedXml("<string>  a\r\nb\rc&#13;  </string>"), PropertyList("  a\nb\nc\r  "));
  EXPECT_EQ(decodedXml("<array><integer> 5\n</integer><integer>+6</integer><integer>-0x10</integer></array>"),
            PropertyList(PropertyList::Array{integer(5), integer(6), integer(-16)}));
  EXPECT_EQ(
      decodedXml("<array><real>1</real><real>1e400</real><real>-1e-400</real><real>+Infinity</real></array>"),
      PropertyList(PropertyList::Array{1.0, std::numeric_limits<double>::infinity(), -0.0,
                                       std::numeric_limits<double>::infinity()}));
  EXPECT_EQ(decodedXml("<data>\n\tYW\n\tJj ZA==\n</data>"), data("abcd"));
  EXPECT_EQ(decodedXml("<date>2010-01-31T12:00:00Z</date>"), date(286632000));
  EXPECT_EQ(decodedXml("<dict><key>a</key><true/><key>a</key><false/></dict>"),
            PropertyList(PropertyList::Dictionary{{"a", false}}));
}

TEST(XmlTest, ReadsItWithEveryBeginning) {
  const PropertyList kWant(PropertyList::Dictionary{{"\xC3\xA4", true}});
  const std::string kBody = "<dict><key>\xC3\xA4</key><true/></dict>";
  EXPECT_EQ(decoded(kBody), kWant);
  EXPECT_EQ(decoded("\n <plist>" + kBody + "</plist>"), kWant);
  EXPECT_EQ(decoded("\xEF\xBB\xBF<?xml version='1.0'?><!-- c --><plist>" + kBody + "</plist><!-- end -->"),
            kWant);
  EXPECT_EQ(decoded("<!DOCTYPE plist [ <!-- ] > --> <!ELEMENT key (#PCDATA)> <!ENTITY e \"]>\"> ]>" + kBody),
            kWant);
  EXPECT_EQ(decoded("<?xml version='1.0' encoding='iso-8859-1'?><dict><key>\xE4</key><true/></dict>"), kWant);
  std::string wide = "\xFF\xFE";
  for (char c : "<dict><key>?</key><true/></dict>"s) wide += c == '?' ? "\xE4\0"s : std::string{c, '\0'};
  EXPECT_EQ(decoded(wide), kWant);
  EXPECT_EQ(decoded(std::string_view(wide).substr(2)), kWant);
}

TEST(XmlTest, DamageReadsAsNothing) {
  for (const char* body : {"",
                           "<dict>",
                           "<dict></array>",
                           "<dict><key>a</key></dict>",
                           "<dict><true/></dict>",
                           "<dict>x</dict>",
                           "<array><string>a</array>",
                           "<string>&nbsp;</string>",
                           "<string>&#xD800;</string>",
                           "<string>&#x110000;</string>",
                           "<string>&amp</string>",
                           "<string>a<true/></string>",
                           "<integer></integer>",
                           "<integer>1x</integer>",
                           "<integer>18446744073709551616</integer>",
                           "<integer>-9223372036854775809</integer>",
                           "<real>1,5</real>",
                           "<real>--1</real>",
                           "<real/>",
                           "<date>2010-02-29T00:00:00Z</date>",
                           "<date>yesterday</date>",
                           "<date>2010-01-31T24:00:00Z</date>",
                           "<data>a</data>",
                           "<data>ab*d</data>",
                           "<data>ab==cd</data>",
                           "<true>yes</true>",
                           "<thing/>",
                           "<true/><true/>",
                           "<true/>x",
                           "<string a=b>x</string>",
                           "<string>\xFF</string>",
                           "<![CDATA[x]]>",
                           "<string><![CDATA[x</string>",
                           "<!-- ",
                           "<? "})
    EXPECT_TRUE(isDamaged("<plist>" + std::string(body) + "</plist>")) << body;
  for (const char* text :
       {"<plist><true/>", "<plist/>", "<true/></plist>", "<?xml version='1.0' encoding='KOI8-R'?><true/>",
        "<plist><true/></plist>trailing", "<!DOCTYPE plist [ <true/>", "<dict"})
    EXPECT_TRUE(isDamaged(text)) << text;
}

TEST(BinaryTest, ReadsWhatOthersWrite) {
  // {"a": -1, "b": 18446744073709551615, "c": "€", "d": [a date, a 32-bit real, shared "a"], "u": UID 5}
  auto file = "bplist00"s + "\xD5\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0D"s + "QaQbQcQdQu" +
              "\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s +
              "\x14\x00\x00\x00\x00\x00\x00\x00\x00\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s + "\x61\x20\xAC"s +
              "\xA3\x0A\x0B\x01"s + "\x33\xBF\xF0\x00\x00\x00\x00\x00\x00"s + "\x22\x3F\x00\x00\x00"s +
              "\x09"s + "\x80\x05"s;
  const auto kTable = static_cast<char>(file.size());
  file += "\x08\x13\x15\x17\x19\x1B\x1D\x26\x37\x3A\x3E\x47\x4C\x4D"s;
  file += "\0\0\0\0\0\0\x01\x01\0\0\0\0\0\0\0\x0E\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"s + kTable;
  EXPECT_EQ(decoded(file), PropertyList(PropertyList::Dictionary{
                               {"a", integer(-1)},
                               {"b", UINT64_MAX},
                               {"c", "\xE2\x82\xAC"},
                               {"d", PropertyList::Array{date(-1), PropertyList(0.5), PropertyList("a")}},
                               {"u", PropertyList::Dictionary{{"CF$UID", integer(5)}}}}));
}

// A binary file whose objects, all with one-byte references, are given.
std::string binaryFile(const std::vector<std::string>& objects) {
  std::string file = "bplist00", table;
  for (const std::string& object : objects) {
    table += {static_cast<char>(file.size() >> 8), static_cast<char>(file.size() & 0xFF)};
    file += object;
  }
  auto last = [](std::size_t number) {
    return "\0\0\0\0\0\0"s + static_cast<char>(number >> 8) + static_cast<char>(number);
  };
  std::size_t at = file.size();
  return file + table + "\0\0\0\0\0\0\x02\x01"s + last(objects.size()) + last(0) + last(at);
}

TEST(BinaryTest, HandMadeFilesAreReadable) {
  EXPECT_EQ(decoded(binaryFile({"\xA2\x01\x01", "\x09"})), PropertyList(PropertyList::Array{true, true}));
}

TEST(BinaryTest, ObjectsThatReferToThemselvesAreDamage) {
  EXPECT_TRUE(isDamaged(binaryFile({"\xA1\x00"s})));
  EXPECT_TRUE(isDamaged(binaryFile({"\xA1\x01", "\xA2\x01\x00"s})));
  EXPECT_TRUE(isDamaged(binaryFile({"\xD1\x01\x00"s, "Qa"})));
}

TEST(BinaryTest, ObjectsSharedWithoutEndAreDamage) {
  std::vector<std::string> objects;
  for (int i = 1; i < 120; ++i) objects.push_back("\xA2"s + static_cast<char>(i) + static_cast<char>(i));
  objects.push_back("\x5F\x11\x10\x00"s + std::string(4096, 'x'));
  EXPECT_TRUE(isDamaged(binaryFile(objects)));
  std::vector<std::string> texts{"\xAF\x11\x01\x00"s + std::string(256, '\1'),
                                 "\xAF\x11\x01\x00"s + std::string(256, '\2'),
                                 "\x5F\x11\x10\x00"s + std::string(4096, 'x')};
  EXPECT_TRUE(isDamaged(binaryFile(texts)));
}

TEST(BinaryTest, DamageReadsAsNothing) {
  for (const std::string& object :
       {"\x00"s, "\x0F"s, "\x15"s, "\x13\x00"s, "\x21\x00\x00"s, "\x33\x7F\xF0\x00\x00\x00\x00\x00\x00"s,
        "\x51\xFF"s, "\x71\xFF"s, "\x61\xD8\x00"s, "\x52x"s, "\x5F\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s,
        "\xAF\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s, "\xDF\x13\x80\x00\x00\x00\x00\x00\x00\x00"s, "\xA1\x05"s,
        "\xD1\x00\x00"s, "\x5F\x50"s, "\x90"s, "\x88"s + std::string(9, '\0'),
        "\x14\x01"s + std::string(15, '\0')})
    EXPECT_TRUE(isDamaged(binaryFile({object}))) << testing::PrintToString(object);
  EXPECT_TRUE(isDamaged("bplist00"));
  EXPECT_TRUE(isDamaged("bplist15" + encodeBinaryPropertyList(true).substr(8)));
  EXPECT_TRUE(isDamaged("bplist00" + std::string(32, '\0')));
  EXPECT_TRUE(isDamaged("bplist00" + std::string(32, '\xFF')));
}

TEST(AsciiTest, ReadsWhatOthersWrite) {
  EXPECT_EQ(
      decoded("// settings\n{ a = b; 'c d' = \"e\\n\\U20ac\\101\\\"\"; /* list */ list = (1, (), {}, <0fbd "
              "77>,); }\n"),
      PropertyList(PropertyList::Dictionary{
          {"a", "b"},
          {"c d",
           "e\n\xE2\x82\xAC"
           "A\""},
          {"list", PropertyList::Array{"1", PropertyList::Array{}, PropertyList(), data("\x0F\xBD\x77")}}}));
  EXPECT_EQ(decoded("a/b.c:$_-1"), PropertyList("a/b.c:$_-1"));
  EXPECT_EQ(decoded("garbage\n"), PropertyList("garbage"));
  EXPECT_EQ(decoded("<dada>"), data("\xDA\xDA"));
  EXPECT_EQ(decoded("( )"), PropertyList(PropertyList::Array{}));
  EXPECT_EQ(decoded("\"\\ud83d\\uDE00 \\200 \\7 \\?\\\n\""),
            PropertyList("\xF0\x9F\x98\x80 \xC2\xA0 \a ?\n"));
}

TEST(AsciiTest, AFileOfKeysAndValuesIsADictionary) {
  const PropertyList kWant(PropertyList::Dictionary{{"a", "b"}, {"c", "c"}, {"d", PropertyList()}});
  EXPECT_EQ(decoded("/* strings */\n\"a\" = \"b\";\nc;\nd = {}; // end"), kWant);
}

TEST(AsciiTest, DamageReadsAsNothing) {
  for (const char* text : {"",
                           " \n",
                           "// only",
                           "/* open",
                           "{",
                           "{ a = b }",
                           "{ a = ; }",
                           "{ = b; }",
                           "{ a = b; } x",
                           "(a b)",
                           "(a,,b)",
                           "(",
                           "<0f",
                           "<0>",
                           "<0g>",
                           "\"open",
                           "\"\\",
                           "\"\\ud83d\"",
                           "\"\\ud83d\\u0041\"",
                           "\"\\U\"",
                           "a b",
                           "a = b",
                           "{ a = b; /* }",
                           "!",
                           "a = b; }",
                           "\xFF",
                           "\xFF\xFE\x61"})
    EXPECT_TRUE(isDamaged(text)) << text;
}

// Deepest lists, in each format: the limit counts dictionaries and arrays.
std::string deepXml(int levels) {
  std::string text;
  for (int i = 0; i < levels; ++i) text += "<array>";
  text += "<true/>";
  for (int i = 0; i < levels; ++i) text += "</array>";
  return text;
}

std::string deepAscii(int levels) {
  return std::string(static_cast<std::size_t>(levels), '(') + "a" +
         std::string(static_cast<std::size_t>(levels), ')');
}

PropertyList deepList(PropertyList list, int levels) {
  for (int i = 0; i < levels; ++i) {
    PropertyList::Array outer;
    outer.push_back(std::move(list));
    list = PropertyList(std::move(outer));
  }
  return list;
}

TEST(CodecTest, NestingIsLimited) {
  const PropertyList kDeepest = deepList(true, kMaxPropertyListDepth);
  EXPECT_EQ(decoded(deepXml(kMaxPropertyListDepth)), kDeepest);
  EXPECT_EQ(decoded(deepAscii(kMaxPropertyListDepth)), deepList("a", kMaxPropertyListDepth));
  EXPECT_EQ(decoded(encodeBinaryPropertyList(kDeepest)), kDeepest);
  EXPECT_TRUE(isDamaged(deepXml(kMaxPropertyListDepth + 1)));
  EXPECT_TRUE(isDamaged(deepAscii(kMaxPropertyListDepth + 1)));
  EXPECT_TRUE(isDamaged(encodeBinaryPropertyList(deepList(true, kMaxPropertyListDepth + 1))));
  EXPECT_TRUE(isDamaged(deepXml(1'000'000)));
  EXPECT_TRUE(isDamaged(deepAscii(1'000'000)));
}

TEST(CodecTest, SizeIsLimited) {
  std::string text = "<string>";
  text.resize(kMaxPropertyListBytes - 9, 'x');
  text += "</string>";
  EXPECT_FALSE(isDamaged(text));
  EXPECT_TRUE(isDamaged(text + " "));
}

// The sentence about the damage that an administrator reads.
struct DamageCase {
  std::string bytes;
  std::string sentence;
};

void expectSentences(const std::vector<DamageCase>& cases) {
  for (const DamageCase& damaged : cases) {
    PropertyListDamage damage;
    EXPECT_FALSE(decodePropertyList(damaged.bytes, damage)) << damaged.bytes;
    EXPECT_EQ(damage.sentence(), damaged.sentence) << damaged.bytes;
  }
}

TEST(DamageTest, SaysNothingOfAListThatCanBeRead) {
  PropertyListDamage damage{3, "of another file"};
  EXPECT_TRUE(decodePropertyList("{ a = b; }", damage));
  EXPECT_EQ(damage.sentence(), "");
  // It was first taken for one text, which is no damage.
  EXPECT_TRUE(decodePropertyList("a = b;", damage));
  EXPECT_EQ(damage.sentence(), "");
}

TEST(DamageTest, OfXmlIsToldWithItsLine) {
  const std::string begin = "<?xml version=\"1.0\"?>\n<plist>\n<dict>\n";  // three lines
  expectSentences({
      {begin + "<key>A & B</key>", "line 4: \"&\" is not followed by the name of a character"},
      {begin + "<key>&nbsp;</key>", "line 4: \"&\" is not followed by the name of a character"},
      {begin + "<key>a</key>\n<true/>\n", "line 6: the file ends inside <dict>, which begins in line 3"},
      {begin + "<key>a</key>\n<string>b\n", "line 6: the file ends inside <string>, which begins in line 5"},
      {begin + "<key>a</key>\r\n\r<stri", "line 6: the element \"stri\" is not well formed, or has no \">\""},
      {begin + "<key>a</key></dict>", "line 4: </dict> is where the value of the key \"a\" should be"},
      {begin + "<key>a</key>", "line 4: the file ends where a value should be"},
      {begin + "\n<true/>", "line 5: <true> is where <key> or </dict> should be"},
      {begin + "</array>", "line 4: </array> is where <key> or </dict> should be"},
      {begin + "\n\nstray words that go on and on",
       "line 6: \"stray words that go on a\"... is outside of every value"},
      {begin + "</dict>\n</plist>\n" + '\0', "line 6: a zero byte is outside of every value"},
      {begin + "</dict>\n</plist>\n<true/>", "line 6: <true> is where the end of the file should be"},
      {begin + "</dict>\n<true/></plist>", "line 5: <true> is where </plist> should be"},
      {begin + "</dict>\n", "line 5: the file ends where </plist> should be"},
      {begin + "<key>a</key>\n<thing/>", "line 5: <thing> is where a value should be"},
      {begin + "<key>a</key>\n<integer>1x</integer>", "line 5: <integer> cannot hold \"1x\""},
      {begin + "<key>a</key>\n<date>yesterday</date>", "line 5: <date> cannot hold \"yesterday\""},
      {begin + "<key>a</key>\n<true>yes</true>", "line 5: <true> cannot hold \"yes\""},
      {begin + "<key>a</key>\n<data>*</data>", "line 5: <data> cannot hold \"*\""},
      {begin + "<key>a</key>\n<string>b<true/></string>", "line 5: <true> is where </string> should be"},
      {begin + "<!-- \n", "line 4: the comment has no end"},
      {begin + "<? \n", "line 4: \"<?\" is not followed by \"?>\""},
      {begin + "<>", "line 4: \"<\" is not followed by the name of an element"},
      {begin + "<key><![CDATA[", "line 4: \"<![CDATA[\" is not followed by \"]]>\""},
      {"<!DOCTYPE plist [", "line 1: the document type has no end"},
      {"<array>\n" + deepXml(kMaxPropertyListDepth), "line 2: it is nested too deeply"},
  });
}

TEST(DamageTest, OfTextIsToldWithItsLine) {
  expectSentences({
      {"", "it is empty"},
      {" \n\t", "it has nothing but white space"},
      {"// only\n", "line 2: the file ends where a value should be"},
      {"{\n a = b;\n", "line 3: the file ends inside \"{\", which begins in line 1"},
      {"{\r\n a = (b,\r c", "line 3: the file ends inside \"(\", which begins in line 2"},
      {"{ a = b;\n } x", "line 2: \"x\" is where the end of the file should be"},
      {"{ a = b\n}", "line 2: \"}\" is where \";\" should be"},
      {"{\n= b; }", "line 2: \"=\" is where a key should be"},
      {"(\na b)", "line 2: \"b\" is where \",\" or \")\" should be"},
      {"(\n,)", "line 2: \",\" is where a value should be"},
      {"<0g>", "line 1: \"g\" is where a hexadecimal digit should be"},
      {"<0>", "line 1: \">\" is where a hexadecimal digit should be"},
      {"<0f", "line 1: the file ends inside \"<\", which begins in line 1"},
      {"\"open\n", "line 2: the file ends inside the text in quotation marks, which begins in line 1"},
      {"(\n\"\\ud83d\\u0041\")", "line 2: \"\\\\ud83d\" is no character"},
      {"\n/* open", "line 2: the comment has no end"},
      {"limit maxfiles 1024\n", "line 1: \"m\" is where \";\" should be"},
      {"{ a = b; }\0"s, "line 1: a zero byte is where the end of the file should be"},
      {deepAscii(kMaxPropertyListDepth + 1), "line 1: it is nested too deeply"},
  });
}

TEST(DamageTest, OfTheEncodingIsToldWithItsLine) {
  expectSentences({
      {"<?xml version='1.0'?>\n<!-- \xE4 -->\n<true/>", "line 2: the byte 0xE4 is no text in UTF-8"},
      {"a =\n\xFF;", "line 2: the byte 0xFF is no text in UTF-8"},
      {"<?xml version='1.0' encoding='KOI8-R'?><true/>", "line 1: the encoding \"KOI8-R\" is not known here"},
      {"\xFF\xFE\n\0\0\xD8"s, "line 2: the text has half a character of UTF-16"},
      {std::string(kMaxPropertyListBytes + 1, ' '), "it is larger than 64 MB"},
  });
}

TEST(DamageTest, OfTheBinaryFormatHasNoLine) {
  const std::string list = encodeBinaryPropertyList(PropertyList(PropertyList::Array{"a", "b"}));
  std::string table = list;
  table[table.size() - 1] = '\x7F';
  std::string offset = list;
  offset[offset.size() - 33] = '\x7F';
  expectSentences({
      {"bplist00", "it is shorter than any binary list"},
      {"bplist15" + list.substr(8), "it is of a version of the format that is not known here"},
      {"bplist00" + std::string(32, '\xFF'), "its last 32 bytes describe no list; the end may be missing"},
      {list.substr(0, list.size() - 1), "its last 32 bytes describe no list; the end may be missing"},
      {table, "the offset table is outside of the file"},
      {offset, "the offset table points outside of the objects"},
      {binaryFile({"\xA1\x05"s}), "a list refers to an object that is not there"},
      {binaryFile({"\xA1\x00"s}), "it is nested too deeply"},
      {binaryFile({"\x52x"s}), "an object reaches beyond the end of the objects"},
      {binaryFile({"\x90"s}), "an object has an unknown type, or a size that its type cannot have"},
      {binaryFile({"\x33\x7F\xF0\0\0\0\0\0\0"s}),
       "an object has an unknown type, or a size that its type cannot have"},
      {binaryFile({"\x71\xFF"s}), "a text is not well formed"},
      {binaryFile({"\xD1\x01\x01"s, "\x09"}), "a key is no text"},
  });
}

TEST(CodecTest, EncodingsAreReadByTheNamesThatOthersWrite) {
  for (const std::string name : {"UTF-8", "utf-8", "UTF8", "utf8", "Utf_8", "ASCII", "ascii", "us-ascii",
                                 "US-ASCII", "ANSI_X3.4-1968", "ISO646-US", ""})
    EXPECT_EQ(decoded("<?xml version='1.0' encoding='" + name + "'?><string>\xC3\xA4</string>"),
              PropertyList("\xC3\xA4"))
        << name;
  for (const std::string name : {"ISO-8859-1", "iso-8859-1", "ISO_8859-1", "iso8859-1", "ISO88591", "latin1",
                                 "Latin-1", "l1", "CP819", "IBM819"})
    EXPECT_EQ(decoded("<?xml version='1.0' encoding='" + name + "'?><string>\xE4</string>"),
              PropertyList("\xC3\xA4"))
        << name;
  for (const std::string name : {"UTF-16", "UTF-7", "windows-1252", "utf", "8859-1"})
    EXPECT_TRUE(isDamaged("<?xml version='1.0' encoding='" + name + "'?><string>a</string>")) << name;
}

constexpr const char* kTooMuchWords = "it stands for too many values, or for too much text or data";

std::string repeated(const std::string& text, std::size_t count) {
  std::string all;
  all.reserve(text.size() * count);
  for (std::size_t i = 0; i < count; ++i) all += text;
  return all;
}

TEST(CodecTest, ValuesAreLimitedInEveryFormat) {
  const std::size_t most = kMaxPropertyListValues - 1;  // beside the array that they are in
  EXPECT_FALSE(isDamaged("<array>" + repeated("<true/>", most) + "</array>"));
  expectSentences({
      {"<array>\n" + repeated("<true/>", most + 1) + "</array>", "line 2: "s + kTooMuchWords},
      {"<dict>\n" + repeated("<key/><true/>", most / 2 + 1) + "</dict>", "line 2: "s + kTooMuchWords},
      {"(\n" + repeated("{},", most + 1) + ")", "line 2: "s + kTooMuchWords},
      {encodeBinaryPropertyList(PropertyList(PropertyList::Array(most + 1, PropertyList(true)))),
       kTooMuchWords},
  });
}

// A list that means more XML than a file may have: its values are few, but far to the right.
TEST(CodecTest, WhatIsWrittenToAFileCanBeReadAgain) {
  EXPECT_EQ(encodeReadableXmlPropertyList(everything()), encodeXmlPropertyList(everything()));
  PropertyList::Array leaves(kMaxPropertyListValues / 5 * 4, PropertyList(true));
  EXPECT_FALSE(
      encodeReadableXmlPropertyList(deepList(PropertyList(std::move(leaves)), kMaxPropertyListDepth - 1)));
  EXPECT_TRUE(encodeReadableXmlPropertyList(deepList(true, kMaxPropertyListDepth)));
  EXPECT_FALSE(encodeReadableXmlPropertyList(deepList(true, kMaxPropertyListDepth + 1)));
  EXPECT_FALSE(encodeReadableXmlPropertyList(deepList(PropertyList(), kMaxPropertyListDepth)));
  EXPECT_FALSE(encodeReadableXmlPropertyList(date(1e300)));
  EXPECT_FALSE(encodeReadableXmlPropertyList(date(std::nan(""))));
}

#ifndef NORVIK_SANITIZED

// A file of the largest size, made so that it means as much as possible.
TEST(CodecTest, ReadingNeedsABoundedMultipleOfTheLargestFile) {
  const std::string piece = "<dict/>";
  const std::string bytes = "<array>" + repeated(piece, kMaxPropertyListBytes / piece.size() - 1);
  EXPECT_TRUE(holdsWithMemory(6 * kMaxPropertyListBytes, [&] { return isDamaged(bytes); }));
}

TEST(CodecTest, ReadingSharedObjectsNeedsLittleMemory) {
  std::vector<std::string> objects;  // each refers to the next one twice
  for (int i = 1; i < 120; ++i) objects.push_back("\xA2"s + static_cast<char>(i) + static_cast<char>(i));
  objects.push_back("\x09");
  const std::string bytes = binaryFile(objects);
  EXPECT_TRUE(holdsWithMemory(kMaxPropertyListBytes, [&] { return isDamaged(bytes); }));
}

#endif

// Whatever happens to a file, reading it ends, and what is read can be written and read again.
void mangle(const std::string& file, int rounds) {
  std::mt19937 random(4073);
  auto below = [&random](std::size_t end) {
    return std::uniform_int_distribution<std::size_t>(0, end - 1)(random);
  };
  int readable = 0;
  for (int round = 0; round < rounds; ++round) {
    std::string damaged = file;
    for (std::size_t flips = 1 + below(4); flips > 0; --flips)
      damaged[below(damaged.size())] = static_cast<char>(below(2) ? below(256) : below(128) & 0x1F);
    if (below(4) == 0) damaged.resize(below(damaged.size()));
    auto list = decodePropertyList(damaged);
    if (!list) continue;
    ++readable;
    ASSERT_TRUE(decodePropertyList(encodeXmlPropertyList(*list)));
    ASSERT_TRUE(decodePropertyList(encodeBinaryPropertyList(*list)));
  }
  EXPECT_LT(readable, rounds);
}

PropertyList fewOfEach() {
  return PropertyList::Dictionary{
      {"a", PropertyList::Array{integer(1), PropertyList(2.5), PropertyList(true)}},
      {"b", PropertyList::Dictionary{{"c", "\xE2\x82\xAC"}, {"d", data("abcdef")}}},
      {"e", date(0)},
      {"f", "text"}};
}

TEST(CodecTest, MangledXmlDoesNoHarm) {
  mangle(encodeXmlPropertyList(fewOfEach()), 4000);
}

TEST(CodecTest, MangledBinaryDoesNoHarm) {
  mangle(encodeBinaryPropertyList(fewOfEach()), 8000);
  mangle(encodeBinaryPropertyList(everything()), 2000);
}

TEST(CodecTest, MangledAsciiDoesNoHarm) {
  mangle("{ a = (1, 2, \"x\\U20ac\\n\"); b = { c = <0fbd77>; /* d */ }; 'e' = f; }", 8000);
}

TEST(CodecTest, TruncatedFilesReadAsNothing) {
  std::string xml = encodeXmlPropertyList(fewOfEach());
  for (std::size_t length = 0; length + 1 < xml.size(); ++length)
    EXPECT_TRUE(isDamaged(xml.substr(0, length))) << length;
  std::string binary = encodeBinaryPropertyList(fewOfEach());
  // Fewer bytes than the format's name are a word of the old style.
  for (std::size_t length = 6; length < binary.size(); ++length)
    EXPECT_TRUE(isDamaged(binary.substr(0, length))) << length;
}

}  // namespace
}  // namespace norvik
