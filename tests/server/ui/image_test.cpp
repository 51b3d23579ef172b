// The compositing operations by their numbers, and where an image may be drawn and filled.
#include "src/server/mac/ui/image.h"

#include <gtest/gtest.h>

#include "tests/support/pixels.h"

namespace norvik {
namespace {

constexpr Pixel kBlack{0, 0, 0, 255};
constexpr Pixel kRed{255, 0, 0, 255};
constexpr Pixel kHalfRed{128, 0, 0, 128};

struct Case {
  Pixel source;
  Pixel destination;
  Pixel result;
};

void expectAll(CompositingOperation operation, std::initializer_list<Case> cases) {
  for (const Case& c : cases) {
    EXPECT_EQ(composite(operation, c.source, c.destination), c.result)
        << testing::PrintToString(c.source) << " and " << testing::PrintToString(c.destination);
  }
}

TEST(CompositingTest, HasTheToolkitsNumbers) {
  EXPECT_EQ(static_cast<int>(CompositingOperation::sourceOver), 2);
  EXPECT_EQ(static_cast<int>(CompositingOperation::sourceIn), 3);
  EXPECT_EQ(static_cast<int>(CompositingOperation::plusDarker), 11);
}

TEST(CompositingTest, SourceOverCoversByTheSourcesAlpha) {
  expectAll(CompositingOperation::sourceOver, {
                                                  {kRed, kWhite, kRed},
                                                  {kClear, kGrey, kGrey},
                                                  {kHalfRed, kWhite, {255, 127, 127, 255}},
                                                  {kHalfRed, kClear, kHalfRed},
                                                  {kHalfRed, kHalfRed, {192, 0, 0, 192}},
                                              });
}

TEST(CompositingTest, SourceInTakesTheCoverageOfWhatIsThere) {
  expectAll(CompositingOperation::sourceIn, {
                                                {kRed, kWhite, kRed},
                                                {kRed, kClear, kClear},
                                                {kRed, kHalfRed, kHalfRed},
                                                {kHalfRed, kHalfRed, {64, 0, 0, 64}},
                                            });
}

TEST(CompositingTest, PlusDarkerAddsUpCoverageAndDarkness) {
  expectAll(CompositingOperation::plusDarker, {
                                                  {kWhite, kRed, kRed},
                                                  {kGrey, kWhite, kGrey},
                                                  {kGrey, kGrey, {1, 1, 1, 255}},
                                                  {kGrey, kRed, {128, 0, 0, 255}},
                                                  {kBlack, kRed, kBlack},
                                                  {kHalfRed, kHalfRed, {255, 0, 0, 255}},
                                                  {kClear, kHalfRed, kHalfRed},
                                              });
}

TEST(CompositingTest, AColourIsPremultipliedAndKeptWithinItsRange) {
  EXPECT_EQ(premultiplied({1, 0.5, 0, 0.5}), (Pixel{128, 64, 0, 128}));
  EXPECT_EQ(premultiplied({2, -1, 1, 3}), (Pixel{255, 0, 255, 255}));
  EXPECT_EQ(premultiplied(kClearColor), kClear);
}

TEST(ImageTest, IsClearAtFirstAndHoldsNothingOutside) {
  Image image(2, 1);
  EXPECT_EQ(image.pixel(1, 0), kClear);
  const int outside[][2] = {{-1, 0}, {2, 0}, {0, -1}, {0, 1}};
  for (const auto& at : outside) {
    image.setPixel(at[0], at[1], kRed);
    EXPECT_EQ(image.pixel(at[0], at[1]), kClear);
  }
  EXPECT_EQ(image.pixel(0, 0), kClear);
  EXPECT_EQ(image.pixel(1, 0), kClear);
}

TEST(ImageTest, HasNoPixelBelowASizeOfOne) {
  const Image image(-3, 0);
  EXPECT_EQ(image.width(), 0);
  EXPECT_EQ(image.height(), 0);
  EXPECT_EQ(image.pixel(0, 0), kClear);
}

TEST(ImageTest, DrawsAnotherAtItsPlaceAndCutsWhatStandsOut) {
  Image image(3, 2);
  Image source(2, 2);
  source.fill({0, 0, 2, 2}, {1, 0, 0, 1}, CompositingOperation::sourceOver);
  image.draw(source, 2, 1, CompositingOperation::sourceOver, 1.0);
  image.draw(source, -1, -1, CompositingOperation::sourceOver, 0.5);
  EXPECT_EQ(image.pixel(2, 1), kRed);
  EXPECT_EQ(image.pixel(0, 0), kHalfRed);
  EXPECT_EQ(image.pixel(1, 0), kClear);
  EXPECT_EQ(image.pixel(2, 0), kClear);
  EXPECT_EQ(image.pixel(1, 1), kClear);
}

TEST(ImageTest, FillsEveryPixelThatTheRectangleTouches) {
  Image image(4, 3);
  image.fill({0.5, 0.5, 1, 1}, {1, 1, 1, 1}, CompositingOperation::sourceOver);
  for (int y = 0; y < 3; ++y) {
    for (int x = 0; x < 4; ++x) EXPECT_EQ(image.pixel(x, y), x < 2 && y < 2 ? kWhite : kClear) << x << y;
  }
}

TEST(ImageTest, FillsWithinItselfOnly) {
  Image image(2, 2);
  image.fill({-5, -5, 1, 1}, {1, 1, 1, 1}, CompositingOperation::sourceOver);
  image.fill({5, 5, 1, 1}, {1, 1, 1, 1}, CompositingOperation::sourceOver);
  EXPECT_EQ(image.pixel(0, 0), kClear);
  EXPECT_EQ(image.pixel(1, 1), kClear);
  image.fill({-5, -5, 100, 100}, {1, 1, 1, 1}, CompositingOperation::sourceOver);
  EXPECT_EQ(image.pixel(0, 0), kWhite);
  EXPECT_EQ(image.pixel(1, 1), kWhite);
}

}  // namespace
}  // namespace norvik
