// The lock button: its tint pixel by pixel, the cell that it takes over from an interface description, and
// when it has to be drawn again.
#include "src/server/mac/ui/nvk_button.h"

#include <gtest/gtest.h>

#include <initializer_list>

#include "tests/server/stub_computer.h"
#include "tests/support/allocation_count.h"
#include "tests/support/pixels.h"

namespace norvik {
namespace {

constexpr Pixel kHalfWhite{128, 128, 128, 128};
constexpr Pixel kRow[] = {kWhite, kGrey, kHalfWhite, kClear};  // how the plain button looks, left to right
constexpr Color kBlue{0, 0, 1, 1};

struct Painter : ButtonPainter {
  const ButtonCell* drawn = nullptr;
  bool flipped = false;
  void drawButton(const ButtonCell& cell, Image& image) override {
    drawn = &cell;
    flipped = image.isFlipped();
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) image.setPixel(x, y, kRow[x % 4]);
    }
  }
};

// The four pixels of a cell drawn with its corner at (1, 1) of a view of that colour.
std::vector<Pixel> drawn(const ButtonCell& cell, const Color& background) {
  Image view(6, 3);
  view.fill({0, 0, 6, 3}, background, CompositingOperation::sourceOver);
  Painter painter;
  cell.drawWithFrame({1, 1, 4, 1}, view, painter);
  EXPECT_EQ(painter.drawn, &cell);
  for (int y = 0; y < 3; ++y) {
    for (int x = 0; x < 6; ++x) {
      const bool within = y == 1 && x >= 1 && x <= 4;
      if (!within) {
        EXPECT_EQ(view.pixel(x, y), premultiplied(background)) << x << y;
      }
    }
  }
  return {view.pixel(1, 1), view.pixel(2, 1), view.pixel(3, 1), view.pixel(4, 1)};
}

std::vector<Pixel> drawnTinted(const Color& color, const Color& background) {
  NVKButtonCell cell;
  cell.setButtonColor(color);
  return drawn(cell, background);
}

using Pixels = std::vector<Pixel>;

TEST(NVKButtonCellTest, WithoutAColourOrWithTheClearOneDrawsThePlainButton) {
  const Pixels plain = {kWhite, kGrey, kHalfWhite, kClear};
  EXPECT_EQ(drawn(ButtonCell(), kClearColor), plain);
  EXPECT_EQ(drawn(NVKButtonCell(), kClearColor), plain);
  EXPECT_EQ(drawnTinted(kClearColor, kClearColor), plain);
}

TEST(NVKButtonCellTest, TheColourTakesTheShapeAndIsDarkenedByTheShading) {
  EXPECT_EQ(drawnTinted(kBlue, kClearColor),
            (Pixels{
                {0, 0, 255, 255},      // over white the colour itself
                {0, 0, 128, 255},      // over grey darker by as much
                {127, 127, 255, 255},  // covered by both halves, darkened by the one
                kClear,                // nothing where no button is
            }));
}

TEST(NVKButtonCellTest, ATranslucentColourKeepsTheButtonsDarkness) {
  EXPECT_EQ(drawnTinted({1, 1, 1, 0.5}, kClearColor), (Pixels{kWhite, kGrey, {192, 192, 192, 192}, kClear}));
}

TEST(NVKButtonCellTest, IsLaidOverWhatTheViewHolds) {
  EXPECT_EQ(drawnTinted(kBlue, {1, 0, 0, 1}), (Pixels{
                                                  {0, 0, 255, 255},
                                                  {0, 0, 128, 255},
                                                  {127, 127, 255, 255},
                                                  {255, 0, 0, 255},
                                              }));
}

TEST(NVKButtonCellTest, HoldsItsOwnCopyOfTheColour) {
  NVKButtonCell cell;
  Color color = kBlue;
  cell.setButtonColor(color);
  color.blue = 0;
  EXPECT_EQ(cell.buttonColor(), kBlue);
  cell.setButtonColor(std::nullopt);
  EXPECT_FALSE(cell.buttonColor());
}

TEST(NVKButtonCellTest, ThePlainButtonIsDrawnTheWayUpOfTheView) {
  for (const bool flipped : {false, true}) {
    Image view(4, 1);
    view.setFlipped(flipped);
    NVKButtonCell tinted;
    tinted.setButtonColor(kBlue);
    const ButtonCell plain;
    for (const ButtonCell* cell : std::initializer_list<const ButtonCell*>{&plain, &tinted}) {
      Painter painter;
      cell->drawWithFrame({0, 0, 4, 1}, view, painter);
      EXPECT_EQ(painter.drawn, cell);
      EXPECT_EQ(painter.flipped, flipped);
    }
  }
}

// A class of cells that is unrelated to the button's.
std::unique_ptr<ButtonCell> failsToCopy(const ButtonCell&) {
  return nullptr;
}
const CellClass kOtherClass{"OtherCell", &kCellClass, nullptr};
const CellClass kUncopyable{"UncopyableCell", &kButtonCellClass, failsToCopy};

struct ConversionTest : testing::Test {
  StubComputer computer;
  using Failures = std::vector<StubSystem::Failure>;
};

TEST_F(ConversionTest, CarriesAllTheStateAndStartsWithoutAColour) {
  ButtonCell plain;
  plain.title = "Lock";
  plain.image = std::make_shared<const Picture>();
  plain.enabled = false;
  plain.hovered = true;
  plain.pressed = true;
  const auto copy = ConvertObjectIntoSubclass(plain, kNVKButtonCellClass);
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->isa, &kNVKButtonCellClass);
  EXPECT_EQ(copy->title, "Lock");
  EXPECT_EQ(copy->image, plain.image);
  EXPECT_FALSE(copy->enabled);
  EXPECT_TRUE(copy->hovered);
  EXPECT_TRUE(copy->pressed);
  const auto* tinted = dynamic_cast<const NVKButtonCell*>(copy.get());
  ASSERT_NE(tinted, nullptr);
  EXPECT_FALSE(tinted->buttonColor());
  EXPECT_TRUE(computer.system.failures.empty());
}

TEST_F(ConversionTest, IntoItsOwnClassIsACopyWithTheColour) {
  NVKButtonCell cell;
  cell.setButtonColor(kBlue);
  const auto copy = ConvertObjectIntoSubclass(cell, kNVKButtonCellClass);
  EXPECT_EQ(dynamic_cast<const NVKButtonCell&>(*copy).buttonColor(), kBlue);
  const auto plain = ConvertObjectIntoSubclass(ButtonCell(), kButtonCellClass);
  EXPECT_EQ(plain->isa, &kButtonCellClass);
  EXPECT_TRUE(computer.system.failures.empty());
}

TEST_F(ConversionTest, IntoAClassThatDoesNotDeriveIsReported) {
  EXPECT_EQ(ConvertObjectIntoSubclass(NVKButtonCell(), kButtonCellClass), nullptr);
  EXPECT_EQ(
      computer.system.failures,
      (Failures{{"id ConvertObjectIntoSubclass(id, Class)", "src/server/mac/nvk_button",
                 "Invalid parameter not satisfying: [subclass isSubclassOfClass:[object class]]", 43}}));
}

TEST_F(ConversionTest, ACopyThatCannotBeMadeIsReported) {
  EXPECT_EQ(ConvertObjectIntoSubclass(ButtonCell(), kUncopyable), nullptr);
  EXPECT_EQ(computer.system.failures,
            (Failures{{"id ConvertObjectIntoSubclass(id, Class)", "src/server/mac/nvk_button",
                       "Failed to copy object.", 50}}));
}

struct NVKButtonTest : ConversionTest {
  NVKButton button;

  // Has the button decoded with a cell of that class.
  const ButtonCell* decodeWith(std::unique_ptr<ButtonCell> cell) {
    const ButtonCell* decoded = cell.get();
    button.initWithCoder(std::move(cell));
    return decoded;
  }
  const ButtonCell* decodeWithStrangeCell() {
    auto cell = std::make_unique<ButtonCell>();
    cell->isa = &kOtherClass;
    return decodeWith(std::move(cell));
  }
};

TEST_F(NVKButtonTest, WantsATintedCellAndHasOneFromTheStart) {
  EXPECT_EQ(NVKButton::cellClass().name, "NVKButtonCell");
  EXPECT_EQ(button.cell().isa, &NVKButton::cellClass());
}

TEST_F(NVKButtonTest, APlainDecodedCellIsReplacedWithAllItsState) {
  auto plain = std::make_unique<ButtonCell>();
  plain->title = "Lock";
  const ButtonCell* decoded = decodeWith(std::move(plain));
  EXPECT_NE(&button.cell(), decoded);
  EXPECT_EQ(button.cell().isa, &kNVKButtonCellClass);
  EXPECT_EQ(button.cell().title, "Lock");
  EXPECT_TRUE(computer.system.failures.empty());
}

TEST_F(NVKButtonTest, ATintedDecodedCellIsKept) {
  const ButtonCell* decoded = decodeWith(std::make_unique<NVKButtonCell>());
  EXPECT_EQ(&button.cell(), decoded);
}

TEST_F(NVKButtonTest, ACellOfAnotherFamilyIsKeptAndNothingIsReported) {
  const ButtonCell* decoded = decodeWithStrangeCell();
  EXPECT_EQ(&button.cell(), decoded);
  EXPECT_TRUE(computer.system.failures.empty());
}

TEST_F(NVKButtonTest, ADecodedCellThatMemoryIsTooShortToReplaceIsKept) {
  auto plain = std::make_unique<ButtonCell>();
  refuseNextNothrowAllocation();
  const ButtonCell* decoded = decodeWith(std::move(plain));
  EXPECT_EQ(&button.cell(), decoded);
  ASSERT_EQ(computer.system.failures.size(), 1u);
  EXPECT_EQ(computer.system.failures[0].description, "Failed to copy object.");
}

TEST_F(NVKButtonTest, PassesTheColourToATintedCellAlone) {
  button.setButtonColor(kBlue);
  EXPECT_EQ(button.buttonColor(), kBlue);
  EXPECT_FALSE(button.needsDisplay());  // the next drawing picks it up
  decodeWithStrangeCell();
  button.setButtonColor(kBlue);
  EXPECT_FALSE(button.buttonColor());
}

TEST_F(NVKButtonTest, AnotherPictureIsDrawnAtOnceAndTheSameIsNot) {
  const auto locked = std::make_shared<const Picture>();
  const auto unlocked = std::make_shared<const Picture>();
  button.setImage(locked);
  EXPECT_TRUE(button.needsDisplay());
  EXPECT_EQ(button.image(), locked);
  EXPECT_EQ(button.cell().image, locked);
  button.setNeedsDisplay(false);
  button.setImage(locked);
  EXPECT_FALSE(button.needsDisplay());
  button.setImage(unlocked);
  EXPECT_TRUE(button.needsDisplay());
}

TEST_F(NVKButtonTest, APlainCellsPictureAsksForNoDrawing) {
  decodeWithStrangeCell();
  const auto picture = std::make_shared<const Picture>();
  button.setImage(picture);
  EXPECT_EQ(button.image(), picture);
  EXPECT_FALSE(button.needsDisplay());
}

TEST_F(NVKButtonTest, HearsThePointerOverItsVisiblePart) {
  EXPECT_FALSE(button.trackingRect());
  button.viewDidMoveToWindow({0, 0, 32, 20});
  EXPECT_EQ(button.trackingRect(), (Rect{0, 0, 32, 20}));
  EXPECT_FALSE(button.cell().hovered);
}

TEST_F(NVKButtonTest, HoverAndPressAreTheCellsLooks) {
  struct Event {
    void (NVKButton::*happens)();
    bool hovered, pressed, draws;
  };
  const Event events[] = {
      {&NVKButton::mouseExited, false, false, false}, {&NVKButton::mouseEntered, true, false, true},
      {&NVKButton::mouseEntered, true, false, false}, {&NVKButton::mouseDown, true, true, true},
      {&NVKButton::mouseUp, true, false, true},       {&NVKButton::mouseExited, false, false, true},
  };
  for (const Event& event : events) {
    button.setNeedsDisplay(false);
    (button.*event.happens)();
    EXPECT_EQ(button.cell().hovered, event.hovered);
    EXPECT_EQ(button.cell().pressed, event.pressed);
    EXPECT_EQ(button.needsDisplay(), event.draws);
  }
}

}  // namespace
}  // namespace norvik
