// Runs one scenario file in a process of its own, since the pane module keeps state for the life of a
// process.
#pragma once

#include <string>

namespace norvik::scenario {

struct RunResult {
  enum class Outcome {
    finished,
    malformed,  // told on standard error
    crashed,    // told on standard error
  };
  Outcome outcome = Outcome::finished;
  std::string text;    // the file as it stands
  std::string actual;  // the file as it would stand with its actual output; empty where it did not finish
};

// Blocks until the scenario has ended.
RunResult runScenario(const std::string& path);

}  // namespace norvik::scenario
