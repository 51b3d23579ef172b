// One setting at a time, as the rows of the tables have it, in cases that the groups' files cannot produce.
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

TEST(SettingTest, IsNamedAsItsMemberAndItsAccessorAre) {
  const Setting& port = rowOf(serverSettings(), "PortNumber", "NVKService");
  EXPECT_EQ(port.field.name, "m_admin_nvkPort");
  EXPECT_EQ(port.pending.name, "new_admin_nvkPort");
  const Setting& news = rowOf(notificationSettings(), "NvkNotificationShowNews");
  EXPECT_EQ(news.field.name, "m_admin_ntfShowNews");
  EXPECT_EQ(news.pending.name, "new_admin_showNews");
}

TEST(SettingTest, AnUnknownModeLeavesTheStoredOne) {
  const Setting& multiUser = rowOf(serverSettings(), "SingleUser");
  PropertyList dictionary(Dictionary{{"SingleUser", "as it was"}});
  multiUser.storeIn(dictionary, -1);
  EXPECT_EQ(dictionary, PropertyList(Dictionary{{"SingleUser", "as it was"}}));
  multiUser.storeIn(dictionary, 1);
  EXPECT_EQ(dictionary, PropertyList(Dictionary{{"SingleUser", false}}));
}

TEST(SettingTest, AnImageSettingOfTheUserFollowsTheServersOfTheSameKey) {
  int followed = 0;
  for (const Setting& setting : userSettings()) {
    if (!setting.followed) continue;
    ++followed;
    const Setting& server = rowOf(serverSettings(), setting.key);
    EXPECT_EQ(std::get<Setting::Number>(server.field.member), setting.followed.field) << setting.key;
    EXPECT_EQ(std::get<Setting::PendingNumber>(server.pending.operation), setting.followed.pending)
        << setting.key;
  }
  EXPECT_EQ(followed, 5);
}

bool isOfASetting(const NVKServerPrefs& pane, const Control* control) {
  for (const SettingsTable table : {userSettings(), serverSettings(), notificationSettings()}) {
    for (const Setting& setting : table) {
      for (Control NVKServerPrefs::*edits : setting.controls) {
        if (edits != nullptr && &(pane.*edits) == control) return true;
      }
    }
  }
  return false;
}

TEST_F(PaneTest, EveryControlWithASettingsNameIsInTheRowOfASetting) {
  NVKServerPrefs pane(interface);
  int named = 0;
  for (const ControlDescription* control : interface.controls()) {
    if (control->setting.empty()) continue;
    ++named;
    EXPECT_TRUE(isOfASetting(pane, pane.outlet(control->outlet))) << control->outlet;
  }
  EXPECT_GT(named, 0);
}

TEST(SettingTest, EveryKeyOfATableIsThereOnce) {
  for (const SettingsTable table : {userSettings(), serverSettings(), notificationSettings()}) {
    for (const Setting& setting : table) {
      if (setting.stored == StoredAs::nowhere) continue;
      EXPECT_EQ(&rowOf(table, setting.key, setting.service), &setting) << setting.key;
    }
  }
}

}  // namespace
}  // namespace norvik
