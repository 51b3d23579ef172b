// The reader of the interface description: what it makes of a good one, and its messages about a bad one.
#include "src/server/mac/ui/interface_description.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

namespace norvik {
namespace {

using Array = PropertyList::Array;
using Dictionary = PropertyList::Dictionary;

PropertyList number(int64_t value) {
  return PropertyList(value);
}

PropertyList words(int64_t from, const char* words) {
  return Dictionary{{"from", number(from)}, {"words", words}};
}

PropertyList radio(const char* outlet, const char* choice) {
  return Dictionary{{"outlet", outlet}, {"kind", "radio button"}, {"label", "Way"},
                    {"setting", "way"}, {"choice", choice},       {"requires", "ib_box"}};
}

// A description with a control of most kinds, each as short as it may be but for the slider.
PropertyList goodDescription() {
  const Dictionary apply{
      {"outlet", "ib_apply"}, {"kind", "push button"}, {"label", "Apply"}, {"title", "Apply now"}};
  const Dictionary box{{"outlet", "ib_box"}, {"kind", "check box"}, {"label", "Box"}, {"setting", "box"}};
  const Dictionary field{{"outlet", "ib_field"}, {"kind", "text field"}, {"label", "Port"},
                         {"minimum", number(1)}, {"maximum", number(9)}, {"requires", "ib_box"},
                         {"displayOnly", true}};
  const Dictionary slider{{"outlet", "ib_slider"},  {"kind", "slider"},
                          {"label", "Depth"},       {"help", "How deep."},
                          {"setting", "depth"},     {"minimum", number(4)},
                          {"maximum", 8.5},         {"minimumLabel", "Least"},
                          {"maximumLabel", "Most"}, {"tickMarks", number(5)},
                          {"value", number(6)},     {"valueWords", Array{words(4, "few"), words(6, "many")}}};
  const Dictionary popup{{"outlet", "ib_popup"},
                         {"kind", "pop-up"},
                         {"label", "Mode"},
                         {"items", Array{"Low", "High"}},
                         {"hidden", true}};
  const Array rows{Dictionary{{"label", "Beside"}, {"controls", Array{box, field}}},
                   Dictionary{{"controls", Array{slider, popup}}},
                   Dictionary{{"controls", Array{radio("ib_a", "a"), radio("ib_b", "b")}}}};
  const Dictionary section{{"title", "Heading"}, {"note", "A note."}, {"rows", rows}};
  const Dictionary preview{{"quality", "ib_popup"}, {"depth", "ib_slider"}, {"shadow", "ib_slider"}};
  const Dictionary tab{{"label", "user:Page"},
                       {"icon", "a-page"},
                       {"purpose", "What for."},
                       {"preview", preview},
                       {"sections", Array{section}}};
  return Dictionary{{"title", "Panel"},
                    {"width", number(600)},
                    {"height", 400.5},
                    {"frame", Array{apply}},
                    {"tabs", Array{tab}}};
}

// The part of a list at a path of keys and indexes; the path exists.
PropertyList& at(PropertyList& list, std::string_view path) {
  if (path.empty()) return list;
  const std::size_t slash = path.find('/');
  const std::string_view part = path.substr(0, slash);
  const std::string_view rest = slash == std::string_view::npos ? "" : path.substr(slash + 1);
  if (auto* array = list.as<Array>()) {
    std::size_t index = 0;
    std::from_chars(part.data(), part.data() + part.size(), index);
    return at(array->at(index), rest);
  }
  return at(*list.find(part), rest);
}

TEST(InterfaceDescription, ReadsEveryKey) {
  std::string error;
  const auto read = readInterfaceDescription(goodDescription(), error);
  ASSERT_TRUE(read) << error;
  EXPECT_EQ(read->title, "Panel");
  EXPECT_EQ(read->size, (Size{600, 400.5}));
  ASSERT_EQ(read->tabs.size(), 1u);
  EXPECT_EQ(read->tabs[0].label, "user:Page");
  EXPECT_EQ(read->tabs[0].icon, "a-page");
  EXPECT_EQ(read->tabs[0].purpose, "What for.");
  ASSERT_TRUE(read->tabs[0].preview);
  EXPECT_EQ(read->tabs[0].preview->quality, "ib_popup");
  EXPECT_EQ(read->tabs[0].preview->depth, "ib_slider");
  EXPECT_EQ(read->tabs[0].preview->shadow, "ib_slider");
  const SectionDescription& section = read->tabs[0].sections.at(0);
  EXPECT_EQ(section.title, "Heading");
  EXPECT_EQ(section.note, "A note.");
  EXPECT_EQ(section.rows.at(0).label, "Beside");
  EXPECT_EQ(section.rows.at(1).label, "");

  ControlDescription slider;
  slider.outlet = "ib_slider";
  slider.kind = ControlKind::slider;
  slider.label = "Depth";
  slider.help = "How deep.";
  slider.setting = "depth";
  slider.minimum = 4;
  slider.maximum = 8.5;
  slider.minimumLabel = "Least";
  slider.maximumLabel = "Most";
  slider.tickMarks = 5;
  slider.value = 6;
  slider.valueWords = {{4, "few"}, {6, "many"}};
  EXPECT_EQ(section.rows.at(1).controls.at(0), slider);
  EXPECT_EQ(read->find("ib_a")->choice, "a");
  EXPECT_EQ(read->find("ib_field")->requiresOutlet, "ib_box");
  EXPECT_TRUE(read->find("ib_field")->displayOnly);
  EXPECT_TRUE(read->find("ib_popup")->hidden);
  EXPECT_EQ(read->find("ib_popup")->items, (std::vector<std::string>{"Low", "High"}));
  EXPECT_EQ(read->find("ib_apply")->title, "Apply now");
}

TEST(InterfaceDescription, ListsControlsFrameFirstThenPageByPage) {
  std::string error;
  const auto read = readInterfaceDescription(goodDescription(), error);
  ASSERT_TRUE(read) << error;
  std::string outlets;
  for (const ControlDescription* control : read->controls()) outlets += control->outlet + " ";
  EXPECT_EQ(outlets, "ib_apply ib_box ib_field ib_slider ib_popup ib_a ib_b ");
  EXPECT_EQ(read->find("ib_slider"), &read->tabs[0].sections[0].rows[1].controls[0]);
  EXPECT_EQ(read->find("ib_other"), nullptr);
}

TEST(InterfaceDescription, ATextFieldsRangeMayHaveOneEnd) {
  for (const char* missing : {"minimum", "maximum"}) {
    PropertyList list = goodDescription();
    at(list, "tabs/0/sections/0/rows/0/controls/1").as<Dictionary>()->erase(missing);
    std::string error;
    const auto read = readInterfaceDescription(list, error);
    ASSERT_TRUE(read) << error;
    EXPECT_EQ(read->find("ib_field")->minimum.has_value(), missing != std::string_view("minimum"));
    EXPECT_EQ(read->find("ib_field")->maximum.has_value(), missing != std::string_view("maximum"));
  }
}

TEST(InterfaceDescription, FindsAFaultInALaterSection) {
  PropertyList list = goodDescription();
  const Dictionary apply{
      {"outlet", "ib_apply"}, {"kind", "push button"}, {"label", "Again"}, {"title", "Again"}};
  at(list, "tabs/0/sections")
      .as<Array>()
      ->push_back(Dictionary{{"rows", Array{Dictionary{{"controls", Array{apply}}}}}});
  std::string error;
  EXPECT_FALSE(readInterfaceDescription(list, error));
  EXPECT_TRUE(error.starts_with("tabs/0/sections/1/rows/0/controls/0")) << error;
}

TEST(InterfaceDescription, FindsAFaultOnALaterPage) {
  PropertyList list = goodDescription();
  const PropertyList same = at(list, "tabs/0/sections/0/rows/1");
  at(list, "tabs/0/sections").as<Array>()->push_back(Dictionary{{"rows", Array{}}});
  at(list, "tabs")
      .as<Array>()
      ->push_back(
          Dictionary{{"label", "user:Other"}, {"sections", Array{Dictionary{{"rows", Array{same}}}}}});
  std::string error;
  EXPECT_FALSE(readInterfaceDescription(list, error));
  EXPECT_EQ(error,
            "tabs/1/sections/0/rows/0/controls/0: outlet ib_slider is already at "
            "tabs/0/sections/0/rows/1/controls/0");
}

TEST(InterfaceDescription, KnowsTheWordOfEveryKind) {
  const std::pair<const char*, ControlKind> words[] = {{"check box", ControlKind::checkBox},
                                                       {"text field", ControlKind::textField},
                                                       {"label", ControlKind::label},
                                                       {"lock button", ControlKind::lockButton},
                                                       {"outline view", ControlKind::outlineView},
                                                       {"tab view", ControlKind::tabView}};
  for (const auto& [word, kind] : words) {
    PropertyList list = goodDescription();
    at(list, "frame/0") = Dictionary{{"outlet", "ib_it"}, {"kind", word}, {"label", "It"}};
    std::string error;
    const auto read = readInterfaceDescription(list, error);
    ASSERT_TRUE(read) << error;
    EXPECT_EQ(read->frame[0].kind, kind) << word;
  }
}

// One thing wrong with a good description: the value of a key at a path, or the key taken away.
struct Slip {
  std::string path;
  std::string key;
  std::optional<PropertyList> value;
  std::string error;
};

void PrintTo(const Slip& slip, std::ostream* out) {
  *out << slip.path << " " << slip.key;
}

const std::string kRow0 = "tabs/0/sections/0/rows/0/controls/";
const std::string kRow1 = "tabs/0/sections/0/rows/1/controls/";
const std::string kRow2 = "tabs/0/sections/0/rows/2/controls/";

const Slip kSlips[] = {
    // A key that is missing.
    {"", "title", std::nullopt, "description: title is missing"},
    {"", "width", std::nullopt, "description: width is missing"},
    {"", "height", std::nullopt, "description: height is missing"},
    {"", "frame", std::nullopt, "description: frame is missing"},
    {"", "tabs", std::nullopt, "description: tabs is missing"},
    {"tabs/0", "label", std::nullopt, "tabs/0: label is missing"},
    {"tabs/0", "sections", std::nullopt, "tabs/0: sections is missing"},
    {"tabs/0/sections/0", "rows", std::nullopt, "tabs/0/sections/0: rows is missing"},
    {"tabs/0/sections/0/rows/1", "controls", std::nullopt, "tabs/0/sections/0/rows/1: controls is missing"},
    {"frame/0", "outlet", std::nullopt, "frame/0: outlet is missing"},
    {kRow0 + "1", "kind", std::nullopt, kRow0 + "1: kind is missing"},
    {kRow0 + "1", "label", std::nullopt, kRow0 + "1: label is missing"},
    {"tabs/0/preview", "depth", std::nullopt, "tabs/0/preview: depth is missing"},
    {kRow1 + "0/valueWords/0", "words", std::nullopt, kRow1 + "0/valueWords/0: words is missing"},
    // A key that the kind needs.
    {"frame/0", "title", std::nullopt, "frame/0: title is missing"},
    {kRow1 + "0", "minimum", std::nullopt, kRow1 + "0: minimum is missing"},
    {kRow1 + "0", "maximum", std::nullopt, kRow1 + "0: maximum is missing"},
    {kRow1 + "0", "value", std::nullopt, kRow1 + "0: value is missing"},
    {kRow1 + "1", "items", std::nullopt, kRow1 + "1: items is missing"},
    {kRow2 + "0", "setting", std::nullopt, kRow2 + "0: setting is missing"},
    {kRow2 + "0", "choice", std::nullopt, kRow2 + "0: choice is missing"},
    // A value of another type.
    {"", "title", number(1), "title: must be a text"},
    {"", "width", "600", "width: must be a number"},
    {"", "height", true, "height: must be a number"},
    {"", "frame", Dictionary{}, "frame: must be an array"},
    {"frame", "0", "Apply", "frame/0: must be a dictionary"},
    {"tabs", "0", Array{}, "tabs/0: must be a dictionary"},
    {"tabs/0/sections/0", "note", Array{}, "tabs/0/sections/0/note: must be a text"},
    {"tabs/0/sections/0/rows/0", "label", false, "tabs/0/sections/0/rows/0/label: must be a text"},
    {kRow0 + "0", "kind", number(3), kRow0 + "0/kind: must be a text"},
    {kRow0 + "1", "displayOnly", number(1), kRow0 + "1/displayOnly: must be true or false"},
    {kRow1 + "0", "minimum", "4", kRow1 + "0/minimum: must be a number"},
    {kRow1 + "0", "value", 0.0 / 0.0, kRow1 + "0/value: must be a number"},
    {kRow1 + "0", "tickMarks", 5.0, kRow1 + "0/tickMarks: must be a whole number from 0 to 1000"},
    {kRow1 + "0", "tickMarks", number(-1), kRow1 + "0/tickMarks: must be a whole number from 0 to 1000"},
    {kRow1 + "0", "tickMarks", number(1001), kRow1 + "0/tickMarks: must be a whole number from 0 to 1000"},
    {kRow1 + "1/items", "1", number(2), kRow1 + "1/items/1: must be a text"},
    // An unknown key or kind, or one that means nothing there.
    {"", "depth", number(1), "description: unknown key \"depth\""},
    {"tabs/0", "title", "Page", "tabs/0: unknown key \"title\""},
    {"tabs/0/sections/0", "label", "Page", "tabs/0/sections/0: unknown key \"label\""},
    {"tabs/0/sections/0/rows/0", "title", "Page", "tabs/0/sections/0/rows/0: unknown key \"title\""},
    {kRow0 + "0", "colour", "red", kRow0 + "0: unknown key \"colour\""},
    {kRow0 + "0", "kind", "knob", kRow0 + "0/kind: unknown kind \"knob\""},
    {kRow0 + "0", "items", Array{}, kRow0 + "0: items means nothing for this kind of control"},
    {kRow1 + "1", "tickMarks", number(2), kRow1 + "1: tickMarks means nothing for this kind of control"},
    {kRow1 + "1", "valueWords", Array{}, kRow1 + "1: valueWords means nothing for this kind of control"},
    {kRow1 + "0/valueWords/0", "to", number(1), kRow1 + "0/valueWords/0: unknown key \"to\""},
    {"frame/0", "setting", "apply", "frame/0: setting means nothing for this kind of control"},
    // Numbers that do not go together.
    {"", "width", number(0), "width: must be above 0"},
    {"", "height", -1.5, "height: must be above 0"},
    {kRow0 + "1", "minimum", number(10), kRow0 + "1: minimum is above maximum"},
    {kRow1 + "0", "maximum", number(3), kRow1 + "0: minimum is above maximum"},
    {kRow1 + "0", "value", number(3), kRow1 + "0: value is outside the range"},
    {kRow1 + "0", "value", 8.75, kRow1 + "0: value is outside the range"},
    {kRow1 + "0/valueWords/0", "from", number(5), kRow1 + "0/valueWords/0: does not begin at the minimum"},
    {kRow1 + "0/valueWords/1", "from", number(4), kRow1 + "0/valueWords/1: is not above the entry before"},
    {kRow1 + "0/valueWords/1", "from", number(9), kRow1 + "0/valueWords/1: is above the maximum"},
    {kRow1 + "0/valueWords/1", "words", "", kRow1 + "0/valueWords/1: words are empty"},
    // Names that do not go together.
    {"tabs/0", "icon", "../lock", "tabs/0/icon: must be small letters and hyphens"},
    {"tabs/0/preview", "quality", "ib_slider", "tabs/0/preview/quality: names no pop-up: ib_slider"},
    {"tabs/0/preview", "depth", "ib_popup", "tabs/0/preview/depth: names no slider: ib_popup"},
    {"tabs/0/preview", "shadow", "ib_none", "tabs/0/preview/shadow: names no slider: ib_none"},
    {"frame/0", "outlet", "", "frame/0: outlet is empty"},
    {kRow1 + "1", "outlet", "ib_box", kRow1 + "1: outlet ib_box is already at " + kRow0 + "0"},
    {kRow0 + "1", "outlet", "ib_apply", kRow0 + "1: outlet ib_apply is already at frame/0"},
    {kRow0 + "1", "requires", "ib_none", kRow0 + "1: requires names no control: ib_none"},
    {kRow0 + "1", "requires", "ib_slider", kRow0 + "1: requires names no check box: ib_slider"},
    {kRow1 + "0", "setting", "box", kRow1 + "0: setting box already belongs to ib_box"},
    {kRow2 + "1", "setting", "box", kRow2 + "1: setting box already belongs to ib_box"},
    {kRow2 + "1", "choice", "a", kRow2 + "1: choice a of way already belongs to ib_a"},
};

class InterfaceDescriptionError : public testing::TestWithParam<Slip> {};

TEST_P(InterfaceDescriptionError, SaysWhatIsWrongAndWhere) {
  const Slip& slip = GetParam();
  PropertyList list = goodDescription();
  PropertyList& parent = at(list, slip.path);
  if (auto* array = parent.as<Array>())
    array->at(static_cast<std::size_t>(std::stoul(slip.key))) = *slip.value;
  else if (slip.value)
    parent.as<Dictionary>()->insert_or_assign(slip.key, *slip.value);
  else
    ASSERT_EQ(parent.as<Dictionary>()->erase(slip.key), 1u);
  std::string error;
  EXPECT_FALSE(readInterfaceDescription(list, error));
  EXPECT_EQ(error, slip.error);
}

INSTANTIATE_TEST_SUITE_P(Slips, InterfaceDescriptionError, testing::ValuesIn(kSlips));

TEST(InterfaceDescription, RefusesARootThatIsNoDictionary) {
  std::string error;
  EXPECT_FALSE(readInterfaceDescription(Array{}, error));
  EXPECT_EQ(error, "description: must be a dictionary");
}

}  // namespace
}  // namespace norvik
