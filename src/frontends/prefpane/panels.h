// What this front end asks and shows in panels of its own, besides alert panels. A plain C++ header; each
// blocks until its panel is closed. Main thread only.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "src/frontends/shared/change/settings_change.h"
#include "src/frontends/shared/interface/window_messages.h"
#include "src/frontends/shared/reach/reach_watch.h"

namespace norvik::prefpane {

// The message in full: what was run, and what it said.
void showDetails(const WindowMessage& message);

// The list of pending changes, and what Apply would do.
struct ChangesList {
  // What the list asks for; each may be called while it is open.
  std::function<Preview()> preview;
  std::function<void(const std::string& setting)> takeBack;
  std::function<void()> takeBackAll;
};
struct ChangesChoice {
  enum Kind { close, apply, goToSetting } kind = close;
  std::string outlet;  // of the setting to go to
};
ChangesChoice showChanges(const ChangesList& list);

// Which value each setting gets that somebody else has changed too, in the order given; nothing to cancel.
std::optional<std::vector<Side>> chooseSides(const std::vector<Collision>& collisions);

// The answers to "Can they reach me?", for each service. Looks afresh, and whenever a person asks.
void showLadder(ReachWatch& watch);

}  // namespace norvik::prefpane
