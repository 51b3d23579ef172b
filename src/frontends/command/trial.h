// --try: a change is put into force and taken back unless the person keeps it; and what another program's
// trial has left is taken back.
#pragma once

#include <chrono>
#include <nlohmann/json_fwd.hpp>
#include <string>

#include "src/frontends/command/change.h"
#include "src/frontends/shared/trial/trial.h"

namespace norvik::command {

struct CommandLine;

// How a trial ended.
enum class TrialEnd {
  kept,
  reverted,     // the person said so
  lapsed,       // the time passed
  gone,         // the terminal or the input ended
  interrupted,  // by a signal
};

// Tells the person what is waited for, and waits. Blocks at most as long as the trial lasts.
TrialEnd awaitEnd(const Context& context, std::chrono::seconds length);
// Says how it ended: "Taken back, as the time passed."
std::string sentenceOf(TrialEnd end);
// The value of "trial" in JSON.
nlohmann::ordered_json trialJson(TrialEnd end, const std::vector<std::string>& notes);

// Makes the change, on trial where the line says so, or only shows it; writes the outcome. Returns the
// program's exit status.
ExitStatus changeOrTry(const Context& context, const CommandLine& line, const ChangeRequest& request);

// Takes back what a trial has put into force whose program has ended, and says so on standard error, or why
// it could not. To be called before the command looks at the settings.
void takeBackAbandoned(const Context& context);

}  // namespace norvik::command
