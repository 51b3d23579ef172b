// Real numbers to text and back, at the edges and against the standard library of the computer that tests.
#include "src/server/mac/text/reals.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace norvik {
namespace {

using Limits = std::numeric_limits<double>;

constexpr int kRounds = 500;

uint64_t bitsOf(double value) {
  return std::bit_cast<uint64_t>(value);
}

// What the computer's own conversion makes of a text. The tests run in the locale "C".
double byStrtod(const std::string& text) {
  return std::strtod(text.c_str(), nullptr);
}

std::size_t lengthByStrtod(const char* text) {
  char* end = nullptr;
  static_cast<void>(std::strtod(text, &end));
  return static_cast<std::size_t>(end - text);
}

std::string byToChars(double value, RealForm form) {
  char text[400];
  std::to_chars_result result{};
  switch (form) {
    case RealForm::shorter:
      result = std::to_chars(text, text + sizeof text, value);
      break;
    case RealForm::plain:
      result = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed);
      break;
    case RealForm::exponent:
      result = std::to_chars(text, text + sizeof text, value, std::chars_format::scientific);
      break;
  }
  return {text, result.ptr};
}

void expectReads(const std::string& text) {
  const auto number = leadingReal(text);
  ASSERT_TRUE(number) << text;
  EXPECT_EQ(number->length, text.size()) << text;
  EXPECT_EQ(bitsOf(number->value), bitsOf(byStrtod(text))) << text << ": " << number->value;
}

void expectWrites(double value) {
  for (const RealForm form : {RealForm::shorter, RealForm::plain, RealForm::exponent})
    EXPECT_EQ(realText(value, form), byToChars(value, form));
  const std::string shortest = realText(value, RealForm::shorter);
  EXPECT_EQ(bitsOf(leadingReal(shortest)->value), bitsOf(value)) << shortest;
}

// Powers of ten and of two over the whole range, the least and the largest among them, with their neighbours.
std::vector<double> edges() {
  std::vector<double> all = {0.0, 1.0 / 3, 0.1, 123456789012345680.0, 9007199254740993.0, Limits::max()};
  const auto addAround = [&all](double value) {
    all.insert(all.end(), {value, std::nextafter(value, 0.0), std::nextafter(value, Limits::infinity())});
  };
  for (int i = -1074; i < 1024; i += 9) addAround(std::ldexp(1.0, i));
  for (int i = -1022; i < -1019; ++i) addAround(std::ldexp(1.0, i));
  for (int i = -323; i <= 308; i += 5) addAround(byStrtod("1e" + std::to_string(i)));
  for (int i = 14; i <= 25; ++i) addAround(byStrtod("1e" + std::to_string(i)));
  return all;
}

TEST(RealsTest, WritesAndReadsEveryEdgeAsTheStandardLibraryDoes) {
  for (const double value : edges()) expectWrites(value);
  expectWrites(-0.0);
  expectWrites(-1e22);
}

TEST(RealsTest, WritesAndReadsAnyNumberAsTheStandardLibraryDoes) {
  std::mt19937_64 random(1);
  for (int i = 0; i < kRounds; ++i)
    if (const auto value = std::bit_cast<double>(random()); std::isfinite(value)) expectWrites(value);
  for (int i = 0; i < kRounds; ++i) expectWrites(static_cast<double>(random() % 2'000'000'000) / 1000);
}

TEST(RealsTest, ReadsAnyDigitsAsStrtodDoes) {
  std::mt19937_64 random(2);
  for (int i = 0; i < kRounds; ++i) {
    std::string text = std::to_string(random());
    text.insert(random() % (text.size() + 1), ".");
    expectReads(text + "e" + std::to_string(static_cast<int>(random() % 700) - 350));
  }
}

// The middle between two doubles goes to the even one; a digit however far behind takes it off the middle.
TEST(RealsTest, RoundsTheMiddleToEvenAndAllElseToTheNearest) {
  const std::string middle = "9007199254740993";
  const std::string zeros(2000, '0');
  EXPECT_EQ(leadingReal(middle)->value, 9007199254740992.0);
  EXPECT_EQ(leadingReal("9007199254740995")->value, 9007199254740996.0);
  expectReads(middle + "." + zeros);
  expectReads(middle + "." + zeros + "1");
  EXPECT_EQ(leadingReal(middle + "." + zeros + "1")->value, 9007199254740994.0);
  expectReads("0." + zeros + middle + "e2000");
  expectReads(middle + zeros + "1e-2001");

  // The middle of the two smallest has the most digits.
  const std::string most =
      "2.4703282292062327208299439643411068618252990130716238221279284125033775363510437593264"
      "991818081799618989828234772285886546332835517796989819938739800539093906315035659515570"
      "226392290858392449105184435931802849936536152500319370457678249219365623669863658480757"
      "001585769269903706311928279558551332927834338409351978015531246597263579574622766465272"
      "827220056374006485499977096599470454020828166226237857393450736339007967761930577506740"
      "176324673600968951340535537458516661134223766691605158159";
  expectReads(most + "e-324");
  expectReads(most + "000000000000000000000000000000000000000000000000000000000000000001e-324");
}

TEST(RealsTest, TellsWhatNoDoubleIsNear) {
  struct Case {
    const char* text;
    double value;
    bool inRange;
  };
  for (const Case& wanted : {Case{"1.7976931348623157e308", Limits::max(), true},
                             {"1.7976931348623158079e308", Limits::max(), true},
                             {"1.797693134862315808e308", Limits::infinity(), false},
                             {"-1e400", -Limits::infinity(), false},
                             {"1e99999999999999999999999", Limits::infinity(), false},
                             {"4.9406564584124654e-324", Limits::denorm_min(), true},
                             {"2.4703282292062328e-324", Limits::denorm_min(), true},
                             {"2.4703282292062327e-324", 0.0, false},
                             {"-1e-400", -0.0, false},
                             {"1e-99999999999999999999999", 0.0, false},
                             {"0e99999999999999999999999", 0.0, true},
                             {"-0", -0.0, true}}) {
    const auto number = leadingReal(wanted.text);
    ASSERT_TRUE(number) << wanted.text;
    EXPECT_EQ(bitsOf(number->value), bitsOf(wanted.value)) << wanted.text;
    EXPECT_EQ(number->inRange, wanted.inRange) << wanted.text;
  }
}

TEST(RealsTest, TakesTheNumberAndLeavesWhatFollows) {
  struct Case {
    const char* text;
    double value;
    std::size_t length;
  };
  for (const Case& wanted : {Case{"1.5x", 1.5, 3},
                             {".5", 0.5, 2},
                             {"5.", 5, 2},
                             {"1.2.3", 1.2, 3},
                             {"1e", 1, 1},
                             {"1e+", 1, 1},
                             {"1E-2", 0.01, 4},
                             {"1e2e3", 100, 3},
                             {"2,5", 2, 1},
                             {"0x10", 0, 1},
                             {"-inf", -Limits::infinity(), 4},
                             {"InFinityX", Limits::infinity(), 8},
                             {"infinit", Limits::infinity(), 3},
                             {"00012", 12, 5}}) {
    const auto number = leadingReal(wanted.text);
    ASSERT_TRUE(number) << wanted.text;
    EXPECT_EQ(number->value, wanted.value) << wanted.text;
    EXPECT_EQ(number->length, wanted.length) << wanted.text;
  }
  for (const char* text : {"nan", "-NAN", "nan(ind)", "nan()", "nan(a b)", "nan("}) {
    const auto number = leadingReal(text);
    ASSERT_TRUE(number) << text;
    EXPECT_TRUE(std::isnan(number->value)) << text;
    EXPECT_EQ(std::signbit(number->value), text[0] == '-') << text;
    EXPECT_EQ(number->length, lengthByStrtod(text)) << text;
  }
  for (const char* text : {"", "-", ".", "-.", "e5", ".e5", "+1", " 1", "--1", "i", "na", "x"})
    EXPECT_FALSE(leadingReal(text)) << text;
}

TEST(RealsTest, WritesWhatIsNoNumberWithItsSign) {
  for (const RealForm form : {RealForm::shorter, RealForm::plain, RealForm::exponent}) {
    EXPECT_EQ(realText(Limits::infinity(), form), "inf");
    EXPECT_EQ(realText(-Limits::infinity(), form), "-inf");
    EXPECT_EQ(realText(Limits::quiet_NaN(), form), "nan");
    EXPECT_EQ(realText(std::copysign(Limits::quiet_NaN(), -1.0), form), "-nan");
  }
}

}  // namespace
}  // namespace norvik
