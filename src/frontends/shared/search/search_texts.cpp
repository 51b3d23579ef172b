// The groups' titles come from the pane's sidebar.
#include "src/frontends/shared/search/search_texts.h"

#include <algorithm>

#include "src/frontends/shared/change/pane_setting.h"

namespace norvik {

bool isLocked(const SearchHit& hit, const NVKServerPrefs& pane) {
  return hit.page.group != "user" && !pane.authorized();
}

std::string placeOf(const SearchHit& hit, const NVKServerPrefs& pane) {
  const std::string page = hit.name.empty() ? "" : ", " + hit.page.title;
  return (isLocked(hit, pane) ? "Locked: " : "") + groupTitle(pane, hit.page.group) + page;
}

std::string lockedSentence(const SearchHit& hit) {
  return "The page " + hit.page.title + " is locked. Open the lock to see it.";
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
