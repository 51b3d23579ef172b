// What is stored now is asked of the files of now.
#include "src/frontends/shared/history/history_view.h"

#include <algorithm>
#include <variant>

#include "src/frontends/shared/change/setting_groups.h"
#include "src/frontends/shared/change/setting_rows.h"
#include "src/frontends/shared/edits/edited_shadow.h"
#include "src/frontends/shared/language/language.h"

namespace norvik {

namespace {

constexpr std::string_view kStillSo = english("Still so");
constexpr std::string_view kTakenBack = english("Taken back");
constexpr std::string_view kChangedAgain = english("Changed again");
constexpr std::string_view kNotHere = english("Not on this computer");
constexpr std::string_view kThen = english("{1} → {2}");

struct FrontEndName {
  std::string_view word, words;
};
constexpr FrontEndName kFrontEnds[] = {
    {"window", english("Settings window")},
    {"pane", english("System Preferences")},
    {"norvikctl", english("Command line")},
};

std::string wordsOf(const SettingValue& value) {
  if (const auto* words = std::get_if<std::string>(&value)) return *words;
  if (const auto* number = std::get_if<int64_t>(&value)) return std::to_string(*number);
  return std::get<bool>(value) ? "on" : "off";
}

HistoryRow rowFor(const RecordedSetting& setting, std::string now) {
  const std::string before = wordsOf(setting.before), after = wordsOf(setting.after);
  HistoryRow row;
  row.then = sentence(kThen, {before, after});
  row.differs = now != after;
  row.since = translated(!row.differs ? kStillSo : now == before ? kTakenBack : kChangedAgain);
  row.now = std::move(now);
  return row;
}

HistoryRow rowOf(EditedPane& fresh, const InterfaceDescription& interface, const RecordedSetting& setting) {
  if (setting.name == kOpenFilesLimitName) {
    HistoryRow row = rowFor(setting, limitText(wholeLimit(fresh.pane().m_admin_maxFiles.launchd)));
    row.label = translated(kOpenFilesLimitLabel);
    return row;
  }
  const PaneSetting* known = fresh.find(setting.name);
  if (known == nullptr) {
    HistoryRow row = rowFor(setting, "");
    row.label = setting.name;
    row.since = translated(kNotHere);
    return row;
  }
  HistoryRow row = rowFor(setting, known->textOf(storedValueOf(fresh.pane(), *known)));
  row.label = labelOf(known->description(), interface);
  row.page = known->description().page.title;
  return row;
}

}  // namespace

std::vector<HistoryRow> historyRows(Platform& computer, const InterfaceDescription& interface,
                                    const std::vector<RecordedSetting>& settings) {
  EditedShadow fresh(computer, interface);
  std::vector<HistoryRow> rows;
  rows.reserve(settings.size());
  for (const RecordedSetting& setting : settings) rows.push_back(rowOf(fresh.edited(), interface, setting));
  return rows;
}

std::string frontEndWords(std::string_view frontEnd) {
  const auto* found = std::ranges::find(kFrontEnds, frontEnd, &FrontEndName::word);
  return found != std::end(kFrontEnds) ? translated(found->words) : std::string(frontEnd);
}

std::string outcomeWords(const HistoryEntry& entry) {
  if (entry.outcome == "ok") return translated(english("Saved"));
  const bool isPartly = !entry.change.saved.empty() && !entry.change.notSaved.empty();
  return sentence(isPartly ? english("Partly saved: {1}") : english("Failed: {1}"), {entry.outcome});
}

std::string whatWords(const HistoryEntry& entry, const InterfaceDescription& interface) {
  const auto& settings = entry.change.settings;
  if (settings.size() != 1) {
    return settings.empty() && !entry.change.saved.empty()
               ? entry.change.saved.front()
               : counted(english("{1} setting"), english("{1} settings"), settings.size());
  }
  for (const SettingDescription& known : settingsOf(interface)) {
    if (known.name == settings.front().name)
      return sentence(english("{1} ({2})"), {labelOf(known, interface), known.page.title});
  }
  return settings.front().name == kOpenFilesLimitName ? translated(kOpenFilesLimitLabel)
                                                      : settings.front().name;
}

}  // namespace norvik
