// Settings by the words of a person: a page, the start of its title, a group, or one setting.
#pragma once

#include <string>
#include <vector>

#include "src/frontends/command/session.h"

namespace norvik::command {

// Whether a word that is no setting's name means this setting: the page's title or its start, its group,
// both, or what the setting's name begins with. The empty word means every setting.
bool isMeant(const SettingDescription& setting, const std::string& word);

// The settings that a word means, in the order of the pages: the one of that name, or those that it means as
// above. None for a word that means nothing.
std::vector<PaneSetting*> meantSettings(Session& session, const std::string& word);

// The failure for a word that means nothing, with the nearest page or setting.
ChangeError unknownPage(Session& session, const std::string& word);

}  // namespace norvik::command
