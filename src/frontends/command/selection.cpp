// Titles are compared without capitals, and with hyphens for spaces.
#include "src/frontends/command/selection.h"

#include <algorithm>

#include "src/frontends/shared/checks/nearest.h"
#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/language/language.h"

namespace norvik::command {

bool isMeant(const SettingDescription& setting, const std::string& word) {
  const PageName& page = setting.page;
  const std::string wanted = folded(word);
  if (setting.name.starts_with(wanted + ".")) return true;
  return wanted.empty() || wanted == page.group || folded(page.title).starts_with(wanted) ||
         wanted == page.group + ":" + folded(page.title);
}

std::vector<PaneSetting*> meantSettings(Session& session, const std::string& word) {
  if (PaneSetting* one = session.find(word)) return {one};
  std::vector<PaneSetting*> settings;
  for (PaneSetting& setting : session.settings()) {
    if (isMeant(setting.description(), word)) settings.push_back(&setting);
  }
  return settings;
}

ChangeError unknownPage(Session& session, const std::string& word) {
  std::vector<std::string> known = session.settingNames();
  for (const PaneSetting& setting : session.settings()) {
    const std::string& title = setting.description().page.title;
    if (std::ranges::count(known, title) == 0) known.push_back(title);
  }
  return failure(FailureCode::usage,
                 sentence("unknown page or setting \"{1}\".", {word}) + suggestion(word, known), word);
}

}  // namespace norvik::command
