// Controls and views as values: what a control of each kind holds, and when it notifies its observer.
#include "src/server/mac/ui/control.h"
#include "tests/server/change_counter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

namespace norvik {
namespace {

constexpr int64_t kNoNumber = std::numeric_limits<int64_t>::min();

// A control of that kind whose changes are recorded.
struct Observed {
  explicit Observed(ControlKind kind) {
    ControlDescription description;
    description.kind = kind;
    control.describe("ib_any", description);
    control.setObserver(&count);
  }
  Control control;
  ChangeCounter count;
};

TEST(ControlTest, StandsAsDescribedAndEnabledWhateverHostsLeaveOut) {
  ControlDescription description;
  description.outlet = "ib_of_the_description";
  description.kind = ControlKind::slider;
  description.value = 6;
  description.title = "Start";
  description.hidden = true;
  Control control;
  control.describe("ib_user_slider_imgDept", description);
  EXPECT_EQ(control.name(), "ib_user_slider_imgDept");
  EXPECT_EQ(control.kind(), ControlKind::slider);
  EXPECT_EQ(control.doubleValue(), 6);
  EXPECT_EQ(control.title(), "Start");
  EXPECT_TRUE(control.isEnabled());
  EXPECT_FALSE(control.isHidden());
  EXPECT_FALSE(control.isRemoved());
  EXPECT_FALSE(control.isTransparent());
}

TEST(ControlTest, TellsEachPropertyOnceAndNeverTheValueItHas) {
  using Set = std::function<void(Control&)>;
  const auto picture = std::make_shared<const Picture>();
  const Set sets[] = {
      [](Control& c) { c.setEnabled(false); },     [](Control& c) { c.setHidden(true); },
      [](Control& c) { c.setState(kMixedState); }, [](Control& c) { c.setDoubleValue(5.9); },
      [](Control& c) { c.selectItemAtIndex(-1); }, [](Control& c) { c.setStringValue("text"); },
      [](Control& c) { c.setTitle("title"); },     [&](Control& c) { c.setImage(picture); },
      [](Control& c) { c.setTransparent(true); },  [](Control& c) { c.setIntegerValue(7); },
  };
  Observed observed(ControlKind::popUp);
  int expected = 0;
  for (const Set& set : sets) {
    set(observed.control);
    EXPECT_EQ(observed.count.changes, ++expected);
    EXPECT_EQ(observed.count.last, &observed.control);
    set(observed.control);
    EXPECT_EQ(observed.count.changes, expected);
  }
}

TEST(ControlTest, ToldWithoutAnObserverChangesAllTheSame) {
  Control control;
  control.setStringValue("text");
  EXPECT_EQ(control.stringValue(), "text");
}

TEST(ControlTest, AWholeNumberGoesWhereTheKindKeepsIt) {
  Observed check(ControlKind::checkBox), radio(ControlKind::radioButton), slider(ControlKind::slider),
      popUp(ControlKind::popUp), field(ControlKind::textField), label(ControlKind::label);
  check.control.setIntegerValue(-1);
  radio.control.setIntegerValue(1);
  slider.control.setIntegerValue(72);
  popUp.control.setIntegerValue(12);
  field.control.setIntegerValue(5000);
  label.control.setIntegerValue(kNoNumber);
  EXPECT_EQ(check.control.state(), kMixedState);
  EXPECT_EQ(radio.control.state(), kOnState);
  EXPECT_EQ(slider.control.doubleValue(), 72);
  EXPECT_EQ(popUp.control.indexOfSelectedItem(), 12);
  EXPECT_EQ(field.control.stringValue(), "5000");
  EXPECT_EQ(label.control.stringValue(), "-9223372036854775808");
}

TEST(ControlTest, OnlyOnIsOn) {
  Observed observed(ControlKind::checkBox);
  for (const int state : {kOffState, kMixedState, 2}) {
    observed.control.setState(state);
    EXPECT_FALSE(observed.control.isOn()) << state;
  }
}

TEST(ControlTest, ASliderReadsAsAFloatCutTowardZero) {
  struct Case {
    double value;
    int64_t read;
  };
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const Case cases[] = {
      {5.9, 5},
      {-5.9, -5},
      {5.99999999, 6},  // the nearest float is 6
      {16777217, 16777216},
      {std::ldexp(-1, 63), kNoNumber},
      {std::ldexp(1, 62), int64_t{1} << 62},
      {std::ldexp(1, 63), kNoNumber},
      {-1e30, kNoNumber},
      {kInfinity, kNoNumber},
      {-kInfinity, kNoNumber},
      {std::nan(""), kNoNumber},
  };
  Observed observed(ControlKind::slider);
  for (const Case& c : cases) {
    observed.control.setDoubleValue(c.value);
    EXPECT_EQ(observed.control.truncatedValue(), c.read) << c.value;
  }
}

TEST(ViewTest, StandsInOneSuperviewAtATime) {
  View first, second, view, sibling;
  first.addSubview(view);
  first.addSubview(sibling);
  second.addSubview(view);
  EXPECT_EQ(view.superview(), &second);
  EXPECT_EQ(first.subviews(), std::vector<View*>{&sibling});
  EXPECT_EQ(second.subviews(), std::vector<View*>{&view});
  view.removeFromSuperview();
  EXPECT_EQ(view.superview(), nullptr);
  EXPECT_TRUE(second.subviews().empty());
}

TEST(ViewTest, AControlTakenOutIsRemovedAndOneThatStandsNowhereIsNot) {
  Observed observed(ControlKind::checkBox);
  observed.control.removeFromSuperview();
  EXPECT_FALSE(observed.control.isRemoved());
  View view;
  view.addSubview(observed.control);
  EXPECT_FALSE(observed.control.isRemoved());
  observed.control.removeFromSuperview();
  EXPECT_TRUE(observed.control.isRemoved());
  EXPECT_EQ(observed.count.changes, 1);
}

}  // namespace
}  // namespace norvik
