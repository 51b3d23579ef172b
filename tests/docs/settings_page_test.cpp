// The manual page of the settings file names every key that the pane reads, with its type, its range and what
// it means where it is missing.
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "src/adapters/property_lists/codec.h"
#include "src/server/mac/stores/settings.h"

namespace norvik {
namespace {

// A key with its dictionary before it, and what is said about it first.
using Entries = std::vector<std::pair<std::string, std::string>>;

Entries documented() {
  const std::string kDictionary = ".Ss Keys of the dictionary ", kKey = ".It Va ";
  std::ifstream page(NORVIK_SETTINGS_PAGE);
  std::string line, dictionary;
  Entries entries;
  while (std::getline(page, line) && line != ".Sh FILES") {
    if (line.starts_with(kDictionary)) dictionary = line.substr(kDictionary.size()) + ".";
    if (!line.starts_with(kKey)) continue;
    const std::string key = dictionary + line.substr(kKey.size());
    std::getline(page, line);
    entries.emplace_back(key, line);
  }
  return entries;
}

std::string meaningOf(const Setting& setting) {
  const bool isInverted =
      setting.stored == StoredAs::invertedBoolean || setting.stored == StoredAs::invertedUnlessUnknown;
  if (setting.stored == StoredAs::boolean || isInverted) {
    const bool missing = (setting.missing != 0) != isInverted;
    return std::string("boolean; ") + (missing ? "true" : "false") + " where it is missing.";
  }
  std::string text = "integer";
  if (setting.least != kLeast)
    text += ", " + std::to_string(setting.least) + " to " + std::to_string(setting.most);
  const int64_t standsFor = setting.missing == 0 ? setting.standard : setting.missing;
  return text + "; " + std::to_string(standsFor) + " where it is missing" +
         (setting.standard != 0 ? " or 0." : ".");
}

TEST(SettingsPageTest, HasEveryKey) {
  Entries expected;
  for (const Setting& setting : serverSettings()) {
    if (setting.stored == StoredAs::nowhere) continue;
    const std::string dictionary = setting.service != nullptr ? setting.service + std::string(".") : "";
    expected.emplace_back(dictionary + setting.key, meaningOf(setting));
  }
  EXPECT_EQ(documented(), expected);
  EXPECT_EQ(expected.size(), 18U);
}

// The example of the page, which is the file's whole text.
std::string example() {
  std::ifstream page(NORVIK_SETTINGS_PAGE);
  std::string line, text;
  bool isLiteral = false;
  while (std::getline(page, line) && line != ".Ed") {
    if (isLiteral) text += line + '\n';
    if (line.starts_with(".Bd -literal")) isLiteral = true;
  }
  return text;
}

TEST(SettingsPageTest, TheExampleIsWhatThePageSays) {
  const auto list = decodePropertyList(example());
  ASSERT_TRUE(list.has_value());
  // What the page says about it: a port, and whether RDP clients can connect.
  const std::map<std::string, int64_t> said{{"NVKService.PortNumber", 5073}, {"RDPService.Disabled", 0}};
  std::map<std::string, int64_t> read;
  for (const Setting& setting : serverSettings()) {
    const std::string service = setting.service != nullptr ? setting.service : "";
    const std::string name = service + "." + setting.key;
    if (said.contains(name)) read[name] = setting.valueIn(*list);
  }
  EXPECT_EQ(read, said);
}

}  // namespace
}  // namespace norvik
