// The groups' titles come from the pane's sidebar.
#include "src/frontends/shared/search/search_texts.h"

#include <algorithm>

#include "src/frontends/shared/change/pane_setting.h"
#include "src/frontends/shared/language/language.h"

namespace norvik {

bool isLocked(const SearchHit& hit, const NVKServerPrefs& pane) {
  return hit.page.group != "user" && !pane.authorized();
}

std::string placeOf(const SearchHit& hit, const NVKServerPrefs& pane) {
  const std::string group = translated(groupTitle(pane, hit.page.group));
  const std::string place =
      hit.name.empty() ? group : sentence("{1}, {2}", {group, translated(hit.page.title)});
  return isLocked(hit, pane) ? sentence("Locked: {1}", {place}) : place;
}

std::string lockedSentence(const SearchHit& hit) {
  return sentence("The page {1} is locked. Open the lock to see it.", {translated(hit.page.title)});
}

std::vector<SearchHit> findShown(NVKServerPrefs& pane, const InterfaceDescription& interface,
                                 std::string_view text) {
  const std::vector<PaneSetting> settings = paneSettings(interface, pane);
  return findSettings(interface, text, [&settings](const std::string& name) -> std::optional<std::string> {
    const auto found = std::ranges::find(settings, name, &PaneSetting::name);
    if (found == settings.end()) return std::nullopt;
    return found->text();
  });
}

}  // namespace norvik
