// Profiles: settings with their values as a JSON text, which is carried from one computer to many. Reads and
// writes the text and checks it against the interface description; knows no file, no pane and no computer.
//
//   {"norvikProfile": 1, "settings": {"nvk.port": 5000, "nvk.sound": false, "image.quality": "High"}}
//
// docs/profile-schema.json describes the format.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "src/frontends/shared/change/pane_setting.h"
#include "src/frontends/shared/interface/setting_description.h"

namespace norvik {

// The version of the format. It changes with any change that this reader would not understand.
inline constexpr int64_t kProfileVersion = 1;
// A longer text is not accepted. A profile with every setting has less than two thousand bytes.
inline constexpr std::size_t kMaxProfileBytes = std::size_t{1} << 20;

struct ProfileSetting {
  std::string name;
  int64_t value = 0;  // as checkedValue gives it, or kNoChoice

  bool operator==(const ProfileSetting&) const = default;
};
using ProfileSettings = std::vector<ProfileSetting>;

// Something wrong with a profile.
struct ProfileFault {
  bool unreadable = false;  // the text as a whole is no profile that can be read; else one key is wrong
  std::size_t line = 0;     // from 1; 0 where no line can be named
  std::string key;          // the one that is wrong; empty where it is none
  std::string sentence;     // "unknown setting \"nvk.prot\". Did you mean \"nvk.port\"?"

  // "line 3: SENTENCE", or the sentence alone.
  std::string withLine() const;
};

struct ProfileReading {
  ProfileSettings settings;          // in the order of the text; means nothing where there are faults
  std::vector<ProfileFault> faults;  // in the order of the text; one that makes it unreadable is alone
};

// Reads a profile. Every key has to be known and to be given once, and every value to be one that its setting
// takes, with its type: a box is true or false, a number a whole number, all others texts. More than a
// hundred faults are not looked for.
ProfileReading readProfile(std::string_view text, const std::vector<SettingDescription>& known);

// Whether a text is meant as a profile, rather than as a property list, which may begin with a brace too.
bool isProfileText(std::string_view text);

// The profile with these values, in their order; ends with a line feed. The same values give the same bytes.
std::string profileText(const std::vector<std::pair<std::string, SettingValue>>& values);

}  // namespace norvik
