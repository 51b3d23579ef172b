// The interface that ships: it has every control, each of its kind and with the range that its setting's
// store accepts, and every word that a person reads is there and in sentence case.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "resources/resources.h"
#include "src/server/mac/ui/control_table.h"
#include "src/server/mac/ui/interface_description.h"
#include "tests/support/shipped_interface.h"

namespace norvik {
namespace {

using enum ControlKind;

struct NamedKind {
  std::string_view word;
  ControlKind kind;
};

// The words for kinds in the names of outlets.
constexpr NamedKind kKinds[] = {
    {"_chkbox_", checkBox},   {"_rbutton_", radioButton}, {"_slider_", slider},
    {"_popup_", popUp},       {"_edbox_", textField},     {"_label_", label},
    {"_button_", pushButton}, {"_oview_", outlineView},   {"_tview_", tabView},
};

ControlKind kindByName(std::string_view outlet) {
  if (outlet == "ib_button_Auth") return lockButton;
  for (const NamedKind& row : kKinds)
    if (outlet.find(row.word) != std::string_view::npos) return row.kind;
  throw std::runtime_error("no kind in " + std::string(outlet));
}

class ShippedInterface : public testing::Test {
 protected:
  const InterfaceDescription interface_ = shippedInterface();

  const ControlDescription& control(const std::string& outlet) const {
    const ControlDescription* found = interface_.find(outlet);
    if (!found) throw std::runtime_error("no control " + outlet);
    return *found;
  }
};

TEST_F(ShippedInterface, HasEveryControlOnceAndNoOther) {
  std::multiset<std::string_view> expected;
  std::multiset<std::string_view> actual;
  for (const ControlRow& row : controlTable()) expected.insert(row.outlet);
  for (const ControlDescription* found : interface_.controls()) actual.insert(found->outlet);
  EXPECT_EQ(actual, expected);
}

TEST_F(ShippedInterface, GivesEachControlItsKind) {
  for (const ControlRow& row : controlTable())
    EXPECT_EQ(control(std::string(row.outlet)).kind, kindByName(row.outlet)) << row.outlet;
}

TEST_F(ShippedInterface, KeepsTheWholePanelsControlsOffThePages) {
  std::set<std::string> frame;
  for (const ControlDescription& found : interface_.frame) frame.insert(found.outlet);
  EXPECT_EQ(frame, (std::set<std::string>{"ib_button_Apply", "ib_button_Help", "ib_button_Auth",
                                          "ib_label_Auth", "ib_oview_confBar", "ib_tview_confView"}));
}

// A control's name begins with its group, and its page must be of that group: the lock closes whole pages.
TEST_F(ShippedInterface, PutsEachControlOnAPageOfItsGroup) {
  for (const TabDescription& tab : interface_.tabs) {
    const std::string group = tab.label.substr(0, tab.label.find(':'));
    for (const SectionDescription& section : tab.sections)
      for (const RowDescription& row : section.rows)
        for (const ControlDescription& found : row.controls)
          EXPECT_TRUE(found.outlet.starts_with("ib_" + group + "_")) << found.outlet << " on " << tab.label;
  }
}

TEST_F(ShippedInterface, NamesPagesByGroupAndTitleUserPagesFirst) {
  std::vector<std::string> labels;
  for (const TabDescription& tab : interface_.tabs) labels.push_back(tab.label);
  EXPECT_EQ(labels,
            (std::vector<std::string>{"user:Image", "user:Mouse", "admin:Server", "admin:Norvik clients",
                                      "admin:RDP clients", "admin:Connections", "admin:Image", "admin:System",
                                      "admin:Notifications"}));
}

struct ExpectedSlider {
  std::string name;
  double minimum;
  double maximum;
  double value;
};

// The ranges that the stores accept and the defaults that they fall back to.
const ExpectedSlider kSliders[] = {
    {"imgDept", 4, 8, 6}, {"imgCapt", 1, 5, 3}, {"imgBuff", 1, 5, 3}, {"imgShad", 0, 72, 4}};

TEST_F(ShippedInterface, GivesSlidersTheRangesAndDefaultsOfTheStores) {
  for (const ExpectedSlider& row : kSliders) {
    for (const char* group : {"ib_user_slider_", "ib_admin_slider_"}) {
      const ControlDescription& found = control(group + row.name);
      EXPECT_EQ(found.minimum, row.minimum) << found.outlet;
      EXPECT_EQ(found.maximum, row.maximum) << found.outlet;
      EXPECT_EQ(found.value, row.value) << found.outlet;
    }
  }
}

// Tick marks are evenly spread, so they lie on whole numbers only if the gaps between them divide the range.
TEST_F(ShippedInterface, PutsTickMarksOnWholeNumbersAndOnTheDefault) {
  for (const ControlDescription* found : interface_.controls()) {
    if (found->kind != slider) continue;
    ASSERT_GE(found->tickMarks, 2) << found->outlet;
    const int range = static_cast<int>(*found->maximum - *found->minimum);
    ASSERT_EQ(range % (found->tickMarks - 1), 0) << found->outlet;
    const int gap = range / (found->tickMarks - 1);
    EXPECT_EQ(static_cast<int>(*found->value - *found->minimum) % gap, 0) << found->outlet;
    EXPECT_FALSE(found->minimumLabel.empty()) << found->outlet;
    EXPECT_FALSE(found->maximumLabel.empty()) << found->outlet;
  }
}

// They are shown after a number and a comma.
TEST_F(ShippedInterface, SaysInSmallLettersWhatTheNumbersOfASliderMean) {
  for (const ControlDescription* found : interface_.controls()) {
    if (found->kind != slider) continue;
    std::set<std::string> different;
    for (const ValueWords& entry : found->valueWords) {
      EXPECT_TRUE(std::islower(static_cast<unsigned char>(entry.words[0]))) << found->outlet;
      different.insert(entry.words);
    }
    EXPECT_EQ(different.size(), found->valueWords.size()) << found->outlet;
    EXPECT_GE(different.size(), 4u) << found->outlet;
  }
}

TEST_F(ShippedInterface, ShowsAPreviewWhereTheImageIsSet) {
  std::vector<std::string> pages;
  for (const TabDescription& tab : interface_.tabs) {
    if (!tab.preview) continue;
    pages.push_back(tab.label);
    EXPECT_TRUE(tab.preview->quality.ends_with("_popup_imgMode")) << tab.label;
    EXPECT_TRUE(tab.preview->depth.ends_with("_slider_imgDept")) << tab.label;
    EXPECT_TRUE(tab.preview->shadow.ends_with("_slider_imgShad")) << tab.label;
    const std::string group = "ib_" + tab.label.substr(0, tab.label.find(':')) + "_";
    EXPECT_TRUE(tab.preview->quality.starts_with(group)) << tab.label;
  }
  EXPECT_EQ(pages, (std::vector<std::string>{"user:Image", "admin:Image"}));
}

TEST_F(ShippedInterface, GivesPopUpsAnItemForEachStoredValue) {
  EXPECT_EQ(control("ib_user_popup_imgMode").items.size(), 3u);
  EXPECT_EQ(control("ib_admin_popup_imgMode").items.size(), 3u);
  EXPECT_GE(control("ib_admin_popup_gldMode").items.size(), 2u);
  // The defaults are the third, second and third item.
  EXPECT_EQ(control("ib_admin_popup_ntfRepeat").items.at(2), "1 hour");
  EXPECT_EQ(control("ib_admin_popup_ntfClose").items.at(1), "30 seconds");
  EXPECT_EQ(control("ib_admin_popup_ntfShow").items.at(2), "1 minute");
}

TEST_F(ShippedInterface, AsksForPortsFrom1To65535BesideTheirBox) {
  for (const std::string service : {"nvk", "rdp"}) {
    const ControlDescription& field = control("ib_admin_edbox_" + service + "Port");
    EXPECT_EQ(field.minimum, 1);
    EXPECT_EQ(field.maximum, 65535);
    EXPECT_EQ(field.requiresOutlet, "ib_admin_chkbox_" + service + "Port");
    EXPECT_EQ(field.setting, service + ".port");
    EXPECT_FALSE(field.displayOnly);
  }
}

TEST_F(ShippedInterface, MakesTheActionsOnConnectOneSetting) {
  const std::map<std::string, std::string> choices = {
      {"toConsole", "console"}, {"lockScreen", "lock"}, {"toHidden", "hidden"}};
  for (const auto& [name, choice] : choices) {
    const ControlDescription& radio = control("ib_admin_rbutton_" + name);
    EXPECT_EQ(radio.setting, "connect.action");
    EXPECT_EQ(radio.choice, choice);
    EXPECT_EQ(radio.requiresOutlet, "ib_admin_chkbox_actOnLogin");
  }
  EXPECT_EQ(control("ib_admin_chkbox_actOnLogin").setting, "connect.act");
}

TEST_F(ShippedInterface, ShowsTheOpenFilesLimitWithoutEditingIt) {
  for (const char* outlet : {"ib_admin_edbox_maxFSoft", "ib_admin_edbox_maxFHard"}) {
    EXPECT_TRUE(control(outlet).displayOnly) << outlet;
    EXPECT_TRUE(control(outlet).setting.empty()) << outlet;
  }
}

TEST_F(ShippedInterface, HidesOnlyTheControlsReservedForTests) {
  std::set<std::string> hidden;
  for (const ControlDescription* found : interface_.controls())
    if (found->hidden) hidden.insert(found->outlet);
  EXPECT_EQ(hidden, (std::set<std::string>{"ib_admin_chkbox_testIntNotif", "ib_admin_chkbox_debug"}));
}

// What a person can set in the window can be set by name too.
TEST_F(ShippedInterface, NamesEverySettingInLowerCaseWithDots) {
  for (const ControlDescription* found : interface_.controls()) {
    const bool editor = found->kind == checkBox || found->kind == radioButton || found->kind == slider ||
                        found->kind == popUp || found->kind == textField;
    EXPECT_EQ(!found->setting.empty(), editor && !found->hidden && !found->displayOnly) << found->outlet;
    if (found->setting.empty()) continue;
    EXPECT_NE(found->setting.find('.'), std::string::npos) << found->setting;
    EXPECT_TRUE(std::ranges::all_of(found->setting, [](char c) {
      return c == '.' || (c >= 'a' && c <= 'z');
    })) << found->setting;
    EXPECT_EQ(found->setting.starts_with("user."), found->outlet.starts_with("ib_user_")) << found->setting;
  }
}

// A user who follows the server's image settings sees the administrator's controls mirrored: they must match.
TEST_F(ShippedInterface, DescribesTheImageSettingsOfUserAndServerAlike) {
  int pairs = 0;
  for (const char* name :
       {"popup_imgMode", "slider_imgDept", "slider_imgCapt", "slider_imgBuff", "slider_imgShad"}) {
    ControlDescription user = control(std::string("ib_user_") + name);
    const ControlDescription& server = control(std::string("ib_admin_") + name);
    EXPECT_EQ(user.setting, "user." + server.setting);
    user.outlet = server.outlet;
    user.setting = server.setting;
    EXPECT_EQ(user, server);
    ++pairs;
  }
  EXPECT_EQ(pairs, 5);
}

// Names that keep their capitals everywhere.
const std::set<std::string> kNames = {"Norvik", "Norvik's", "NVK", "RDP", "OpenGL"};

// A capital first, and after it none but in names and at the start of a sentence.
testing::AssertionResult isSentenceCase(const std::string& text) {
  if (text.empty()) return testing::AssertionFailure() << "empty";
  std::istringstream words(text);
  std::string word;
  bool start = true;
  while (words >> word) {
    const bool capital = std::isupper(static_cast<unsigned char>(word[0])) != 0;
    const bool digit = std::isdigit(static_cast<unsigned char>(word[0])) != 0;
    const std::string bare = word.substr(0, word.find_last_not_of(".,:;") + 1);
    if (start ? !capital && !digit : capital && !kNames.contains(bare))
      return testing::AssertionFailure() << "\"" << word << "\" in \"" << text << "\"";
    start = word.ends_with('.');
  }
  return testing::AssertionSuccess();
}

testing::AssertionResult isSentence(const std::string& text) {
  if (!text.ends_with('.')) return testing::AssertionFailure() << "no full stop: \"" << text << "\"";
  return isSentenceCase(text);
}

TEST_F(ShippedInterface, LabelsEveryControlInSentenceCase) {
  for (const ControlDescription* found : interface_.controls()) {
    EXPECT_TRUE(isSentenceCase(found->label)) << found->outlet;
    EXPECT_FALSE(found->label.ends_with('.')) << found->outlet;
    EXPECT_FALSE(found->label.ends_with(':')) << found->outlet;
    for (const std::string& item : found->items) EXPECT_TRUE(isSentenceCase(item)) << found->outlet;
    for (const std::string& text : {found->title, found->minimumLabel, found->maximumLabel})
      if (!text.empty()) {
        EXPECT_TRUE(isSentenceCase(text)) << found->outlet;
      }
  }
}

TEST_F(ShippedInterface, HelpsWithEveryControlButLabels) {
  for (const ControlDescription* found : interface_.controls())
    if (found->kind != label) {
      EXPECT_TRUE(isSentence(found->help)) << found->outlet;
    }
}

TEST_F(ShippedInterface, WritesHeadingsAndNotesInSentenceCase) {
  EXPECT_FALSE(interface_.title.empty());
  for (const TabDescription& tab : interface_.tabs) {
    EXPECT_TRUE(isSentenceCase(tab.label.substr(tab.label.find(':') + 1)));
    EXPECT_TRUE(isSentence(tab.purpose)) << tab.label;
    for (const SectionDescription& section : tab.sections) {
      if (!section.title.empty()) {
        EXPECT_TRUE(isSentenceCase(section.title)) << tab.label;
      }
      if (!section.note.empty()) {
        EXPECT_TRUE(isSentence(section.note)) << tab.label;
      }
      for (const RowDescription& row : section.rows)
        if (!row.label.empty()) {
          EXPECT_TRUE(isSentenceCase(row.label)) << tab.label;
        }
    }
  }
}

// Two items with the same words could not be distinguished by name.
TEST_F(ShippedInterface, NamesTheItemsOfAPopUpApart) {
  for (const ControlDescription* found : interface_.controls()) {
    const std::set<std::string> different(found->items.begin(), found->items.end());
    EXPECT_EQ(different.size(), found->items.size()) << found->outlet;
  }
}

TEST(ShippedResources, HoldTheLockPicturesAsTiffWithPagesOf32And64) {
  for (const char* name : {"authlock", "authulock", "icon"}) {
    const auto bytes = resourceFile(name, "tiff");
    ASSERT_TRUE(bytes) << name;
    const auto number = [&](std::size_t offset, std::size_t length) {
      std::size_t value = 0;
      while (length-- > 0) value = value << 8 | static_cast<unsigned char>(bytes->at(offset + length));
      return value;
    };
    ASSERT_EQ(bytes->substr(0, 4), std::string_view("II*\0", 4)) << name;
    std::vector<std::size_t> widths;
    std::size_t page = number(4, 4);
    while (page != 0 && widths.size() < 3) {
      const std::size_t entries = number(page, 2);
      for (std::size_t i = 0; i < entries; ++i)
        if (number(page + 2 + 12 * i, 2) == 256) widths.push_back(number(page + 10 + 12 * i, 2));
      page = number(page + 2 + 12 * entries, 4);
    }
    EXPECT_EQ(widths, (std::vector<std::size_t>{32, 64})) << name;
  }
}

TEST(ShippedResources, AreFoundByNameAndTypeOnly) {
  EXPECT_EQ(resourceFile("Interface", "plist"), interfacePropertyList());
  EXPECT_EQ(resourceFile("Info", "plist"), infoPropertyList());
  EXPECT_FALSE(resourceFile("authlock", "gif"));
  EXPECT_FALSE(resourceFile("authlock.tiff", ""));
  EXPECT_FALSE(resourceFile("lock", "tiff"));
  EXPECT_FALSE(resourceFile("", ""));
  EXPECT_NE(resourceFile("authlock", "tiff"), resourceFile("authulock", "tiff"));
}

TEST(ShippedResources, HoldAnInfoDictionaryOfTheProductsOwn) {
  const auto info = decodePropertyList(infoPropertyList());
  ASSERT_TRUE(info);
  const auto text = [&](const char* key) {
    const PropertyList* value = info->find(key);
    return value && value->as<std::string>() ? *value->as<std::string>() : std::string();
  };
  EXPECT_EQ(text("CFBundleIdentifier"), "com.veltrane.norvik.prefpane");
  EXPECT_EQ(text("CFBundleShortVersionString"), NORVIK_VERSION);
  EXPECT_EQ(text("CFBundleVersion"), NORVIK_VERSION);
  EXPECT_EQ(text("NSPrincipalClass"), "NVKServerPrefs");
  EXPECT_EQ(info->find("NSMainNibFile"), nullptr);
  EXPECT_EQ(text("CFBundleExecutable"), "Norvik");
  EXPECT_EQ(text("CFBundleDevelopmentRegion"), "en");
  EXPECT_EQ(text("LSMinimumSystemVersion"), NORVIK_OLDEST_MACOS);
  EXPECT_EQ(text("NSPrefPaneIconFile"), "icon.tiff");
  EXPECT_EQ(info->find("NVKProductSupport"), nullptr);
}

}  // namespace
}  // namespace norvik
