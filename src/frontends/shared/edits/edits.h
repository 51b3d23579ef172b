// What a person wishes settings to be, by words or by a profile, and how it gets into the controls. The order
// of the words and of the pages does not matter: each control is edited while it is enabled.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "src/frontends/shared/change/failure.h"
#include "src/frontends/shared/edits/edited_pane.h"
#include "src/frontends/shared/profile/profile.h"
#include "src/server/mac/platform/platform.h"

namespace norvik {

struct Edit {
  std::string name;
  int64_t value = 0;    // as PaneSetting has it, or kNoChoice
  std::string because;  // why, where the person did not name it
};

struct Wish {
  std::vector<Edit> edits;  // in the order of the pages
  std::vector<ChangeError>
      errors;  // what is wrong with the words; where there is any, the edits mean nothing
};

// Reads NAME=VALUE words, where the value may be "default". Adds the boxes that the values require, as the
// interface description says. Asks a shadow of a pane on `computer`, so a front end whose own pane is awake
// refreshes it afterwards, as after a preview. Changes nothing.
Wish wishOf(Platform& computer, const InterfaceDescription& interface,
            const std::vector<std::string>& assignments);

// What becomes of the settings that a profile does not name.
enum class Unnamed { stay, toDefaults };
// The same for the settings of a profile. A setting that gets its default and has none while another is as
// the profile says, such as an image value of a user who follows the server's, is left alone.
Wish wishOf(Platform& computer, const InterfaceDescription& interface, const ProfileSettings& profile,
            Unnamed unnamed);

// The same for settings that get values back which they had together. A setting that follows another one then
// is left alone, as it has no value of its own.
Wish wishToReturn(Platform& computer, const InterfaceDescription& interface, const ProfileSettings& settings);

// What to do about a setting whose control is disabled because a box is off.
enum class BehindBoxes {
  refused,  // it cannot be set as things are
  edited,   // as a person does who switches the box on for the moment
};

// Edits the controls until every wish holds. A question that was declined keeps the old value, which is no
// failure: `notes` then says so.
ChangeError applyEdits(EditedPane& edited, const std::vector<Edit>& edits, BehindBoxes behindBoxes,
                       std::vector<std::string>& notes);

}  // namespace norvik
