// One setting at a time, as the rows of the tables have it, where the groups' files cannot bring the case
// about.
#include "src/server/mac/stores/settings.h"

#include <algorithm>

#include "tests/server/pane_fixture.h"

namespace norvik {
namespace {

const Setting& rowOf(SettingsTable table, std::string_view key, const char* service = nullptr) {
  const auto row = std::find_if(table.begin(), table.end(), [&](const Setting& setting) {
    return setting.key == key &&
           std::string_view(setting.service ? setting.service : "") == (service ? service : "");
  });
  EXPECT_NE(row, table.end()) << key;
  return *row;
}

using Dictionary = PropertyList::Dictionary;

TEST(SettingTest, InNoFileMeansThatNoKeyIsReadOrWritten) {
  const Setting& setting = rowOf(serverSettings(), "");
  ASSERT_EQ(setting.stored, StoredAs::nowhere);
  PropertyList dictionary(Dictionary{{"", int64_t{7}}});
  EXPECT_EQ(setting.valueIn(dictionary), setting.missing);
  setting.storeIn(dictionary, 5);
  EXPECT_EQ(dictionary, PropertyList(Dictionary{{"", int64_t{7}}}));
}

TEST(SettingTest, AValueOutOfItsRangeIsTheMissingOnesNotTheNearest) {
  const Setting& depth = rowOf(serverSettings(), "ImageColorDepth");
  struct Case {
    int64_t stored, value;
  };
  for (const Case& c : {Case{3, 6}, {4, 4}, {8, 8}, {9, 6}, {(int64_t{1} << 32) + 5, 5}, {-1, 6}}) {
    EXPECT_EQ(depth.valueIn(PropertyList(Dictionary{{"ImageColorDepth", c.stored}})), c.value) << c.stored;
  }
}

TEST(SettingTest, AServicesKeyIsStoredInItsDictionaryWhichIsMadeWhereThereIsNone) {
  const Setting& port = rowOf(serverSettings(), "PortNumber", "NVKService");
  PropertyList dictionary(Dictionary{{"NVKService", "no dictionary"}, {"Other", true}});
  EXPECT_EQ(port.valueIn(dictionary), kNvkDefaultPort);
  port.storeIn(dictionary, 5000);
  EXPECT_EQ(dictionary, PropertyList(Dictionary{
                            {"NVKService", Dictionary{{"PortNumber", int64_t{5000}}}},
                            {"Other", true},
                        }));
}

TEST(SettingTest, EveryKeyOfATableStandsThereOnce) {
  for (const SettingsTable table : {userSettings(), serverSettings(), notificationSettings()}) {
    for (const Setting& setting : table) {
      if (setting.stored == StoredAs::nowhere) continue;
      EXPECT_EQ(&rowOf(table, setting.key, setting.service), &setting) << setting.key;
    }
  }
}

}  // namespace
}  // namespace norvik
