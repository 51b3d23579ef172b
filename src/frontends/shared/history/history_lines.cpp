// Takes a line only where every field that is needed is there with its type.
#include "src/frontends/shared/history/history_lines.h"

#include <utility>
#include <variant>

namespace norvik {

namespace {

using HistoryJson = nlohmann::ordered_json;

constexpr const char* kEntryKey = "norvikChange";
constexpr int kEntryVersion = 1;
constexpr const char* kOkWord = "ok";

HistoryJson valueJson(const SettingValue& value) {
  return std::visit([](const auto& held) { return HistoryJson(held); }, value);
}

std::optional<SettingValue> valueOfJson(const HistoryJson& value) {
  if (value.is_boolean()) return value.get<bool>();
  if (value.is_number_integer()) return value.get<int64_t>();
  if (value.is_string()) return value.get<std::string>();
  return std::nullopt;
}

std::optional<std::string> textIn(const HistoryJson& object, const char* key) {
  const auto found = object.find(key);
  if (found == object.end() || !found->is_string()) return std::nullopt;
  return found->get<std::string>();
}

std::optional<std::vector<std::string>> textsIn(const HistoryJson& object, const char* key) {
  const auto found = object.find(key);
  if (found == object.end() || !found->is_array()) return std::nullopt;
  std::vector<std::string> texts;
  for (const HistoryJson& text : *found) {
    if (!text.is_string()) return std::nullopt;
    texts.push_back(text.get<std::string>());
  }
  return texts;
}

std::string outcomeWord(FailureCode code) {
  return code == FailureCode::none ? kOkWord : std::string(codeWord(code));
}

bool isEntry(const HistoryJson& object) {
  if (!object.is_object()) return false;
  const auto version = object.find(kEntryKey);
  return version != object.end() && *version == kEntryVersion;
}

}  // namespace

HistoryJson recordedJson(const std::vector<RecordedSetting>& settings) {
  HistoryJson list = HistoryJson::array();
  for (const RecordedSetting& setting : settings) {
    list.push_back(
        {{"name", setting.name}, {"old", valueJson(setting.before)}, {"new", valueJson(setting.after)}});
  }
  return list;
}

std::optional<std::vector<RecordedSetting>> recordedIn(const HistoryJson& list) {
  if (!list.is_array()) return std::nullopt;
  std::vector<RecordedSetting> settings;
  for (const HistoryJson& each : list) {
    if (!each.is_object() || !each.contains("old") || !each.contains("new")) return std::nullopt;
    auto name = textIn(each, "name");
    auto before = valueOfJson(each["old"]);
    auto after = valueOfJson(each["new"]);
    if (!name || !before || !after) return std::nullopt;
    settings.push_back({std::move(*name), std::move(*before), std::move(*after)});
  }
  return settings;
}

std::string lineOf(const HistoryEntry& entry) {
  const HistoryJson object{{kEntryKey, kEntryVersion},
                           {"time", entry.time},
                           {"frontEnd", entry.frontEnd},
                           {"user", entry.user},
                           {"settings", recordedJson(entry.change.settings)},
                           {"outcome", outcomeWord(entry.change.outcome)},
                           {"saved", entry.change.saved},
                           {"notSaved", entry.change.notSaved}};
  return object.dump(-1, ' ', false, HistoryJson::error_handler_t::replace);
}

std::optional<HistoryEntry> entryOf(std::string_view line) {
  const HistoryJson object = HistoryJson::parse(line, nullptr, false);
  if (object.is_discarded() || !isEntry(object)) return std::nullopt;
  auto time = textIn(object, "time");
  auto frontEnd = textIn(object, "frontEnd");
  auto user = textIn(object, "user");
  auto outcome = textIn(object, "outcome");
  auto saved = textsIn(object, "saved");
  auto notSaved = textsIn(object, "notSaved");
  auto settings = object.contains("settings") ? recordedIn(object["settings"]) : std::nullopt;
  if (!time || !frontEnd || !user || !outcome || !saved || !notSaved || !settings) return std::nullopt;
  HistoryEntry entry{std::move(*time), std::move(*frontEnd), std::move(*user), *outcome, {}};
  entry.change = {std::move(*settings), codeOfWord(*outcome).value_or(FailureCode::none), std::move(*saved),
                  std::move(*notSaved)};
  return entry;
}

}  // namespace norvik
