// Runs one scenario file in a process of its own, since the pane module keeps state for the life of a
// process.
#pragma once

#include <string>

namespace norvik::scenario {

struct RunResult {
  enum class Outcome {
    finished,
    leftSomething,  // finished, but something that it opened is left; named on standard error
    malformed,      // reported on standard error
    crashed,        // reported on standard error
  };
  Outcome outcome = Outcome::finished;
  // Whether every command ran.
  bool isWhole() const { return outcome == Outcome::finished || outcome == Outcome::leftSomething; }
  std::string text;    // the file
  std::string actual;  // the file with its actual output; empty where it did not finish
};

// Blocks until the scenario has ended.
RunResult runScenario(const std::string& path);

}  // namespace norvik::scenario
