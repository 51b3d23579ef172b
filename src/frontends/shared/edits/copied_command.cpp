// A setting is pending where the pane would save it; a box and its field are one value, and both are written.
#include "src/frontends/shared/edits/copied_command.h"

#include <algorithm>
#include <vector>

#include "src/frontends/shared/change/setting_groups.h"
#include "src/frontends/shared/change/setting_rows.h"
#include "src/frontends/shared/checks/value_check.h"
#include "src/server/mac/text/join.h"

namespace norvik {

namespace {

// Neither a blank nor anything that a shell gives a meaning.
constexpr std::string_view kPlain =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._-=/:,@%+";

std::string stepOf(const NVKServerPrefs& pane) {
  const bool isReset = wholeLimit(pane.m_admin_maxFiles.launchd).soft <= 0;
  return std::string("norvikctl limits ") + (isReset ? "reset" : "adjust");
}

// By its words; "unset" for a value that has none, such as one that a file holds and no control shows.
void add(EditedPane& edited, const PaneSetting& setting, std::vector<std::string>& set,
         std::vector<std::string>& unset) {
  const Setting* row = rowOfSetting(edited.pane(), setting);
  if (row == nullptr || !isPending(edited.pane(), *row)) return;
  const auto value = setting.value();
  const std::string text = value ? setting.textOf(*value) : "";
  if (value && checkedValue(setting.description(), text) == value) {
    set.push_back(quotedForShell(setting.name() + "=" + text));
  } else if (!value && setting.description().isChoice()) {
    set.push_back(setting.name() + "=none");
  } else {
    unset.push_back(setting.name());
  }
}

}  // namespace

std::string quotedForShell(const std::string& word) {
  if (!word.empty() && word.find_first_not_of(kPlain) == std::string::npos) return word;
  std::string quoted = "'";
  for (const char c : word) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

std::string commandOfPending(EditedPane& edited) {
  std::vector<std::string> set, unset, commands;
  for (const PaneSetting& setting : edited.settings()) add(edited, setting, set, unset);
  if (!set.empty()) commands.push_back("norvikctl set " + joined(set, " "));
  if (!unset.empty()) commands.push_back("norvikctl unset " + joined(unset, " "));
  if (wouldSave(edited.pane(), Group::limit)) commands.push_back(stepOf(edited.pane()));
  return joined(commands, " && ");
}

}  // namespace norvik
