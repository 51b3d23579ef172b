// The words around the search that the windows show. Knows no toolkit.
#pragma once

#include <string>
#include <string_view>

#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/search/setting_search.h"
#include "src/server/mac/pane/pane.h"

namespace norvik {

namespace search_texts {

inline constexpr std::string_view kSearch = english("Search");
inline constexpr std::string_view kHelp =
    english("Finds pages and settings by their words, names and values.");
inline constexpr std::string_view kResults = english("Search results");
inline constexpr std::string_view kNothing = english("Nothing is found.");

}  // namespace search_texts

// Where the hit is, and that a lock is in the way: "Locked: Server Administrator, RDP clients". The group is
// named as in the sidebar.
std::string placeOf(const SearchHit& hit, const NVKServerPrefs& pane);
// Whether the lock keeps its page closed.
bool isLocked(const SearchHit& hit, const NVKServerPrefs& pane);
// The message after a locked one was chosen: where it is, and that opening the lock shows it.
std::string lockedSentence(const SearchHit& hit);

// The pages and settings that the pane shows, with the values that are in its controls now.
std::vector<SearchHit> findShown(NVKServerPrefs& pane, const InterfaceDescription& interface,
                                 std::string_view text);

}  // namespace norvik
