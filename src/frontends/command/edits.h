// What a person wishes settings to be, and how it gets into the controls. The order of the words and of the
// pages does not matter: each control is edited while it is enabled.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "src/frontends/command/commands.h"
#include "src/frontends/command/session.h"

namespace norvik::command {

// The value of a choice of which no button is on: "none".
inline constexpr int64_t kNoChoice = -1;

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
// interface description says. Opens a session of its own and changes nothing.
Wish wishOf(const Context& context, const Arguments& assignments);

// Edits the controls until every wish holds. A question that was declined keeps the old value, which is no
// failure: `notes` then says so.
ChangeError applyEdits(Session& session, const std::vector<Edit>& edits, std::vector<std::string>& notes);

}  // namespace norvik::command
