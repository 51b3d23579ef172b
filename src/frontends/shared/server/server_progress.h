// How far a start or a stop of the server has come, for a front end that shows it with a bar. Follows the
// dots that the pane counts in its state label; changes nothing.
#pragma once

#include <optional>
#include <string>

#include "src/server/mac/pane/pane.h"

namespace norvik {

struct ServerProgress {
  int done = 0;            // seconds of the computer's clock
  int total = 0;           // the same: the longest wait, and the time to settle
  std::string waitingFor;  // for a person: "Waiting for the server to start"
};

class ServerProgressMeter {
 public:
  // To be called each time the state label was drawn, the first time included; reads the daemon's pid file.
  // Nothing while no start or stop is under way. A restart is two, each with the whole length. A server that
  // is up (or gone) before the longest wait is over leaves the rest of that wait out.
  std::optional<ServerProgress> read(const NVKServerPrefs& pane);

 private:
  std::string begun_;          // the label before a dot was counted; empty while nothing is under way
  bool starts_ = false;        // what is awaited is that the server runs
  std::optional<int> waited_;  // how many dots were counted until it did what is awaited
};

}  // namespace norvik
