// norvikctl set and unset: what a person wishes settings to be, applied together.
#include "src/frontends/command/command_line.h"
#include "src/frontends/command/trial.h"
#include "src/frontends/command/wish_change.h"
#include "src/frontends/shared/language/language.h"

namespace norvik::command {

namespace {

ExitStatus fulfil(const Context& context, const CommandLine& line, const Arguments& assignments) {
  const Wish wish = wishOf(context.computer, context.interface, assignments);
  if (!wish.errors.empty()) return refuse(context, wish.errors);
  return changeOrTry(context, line, changeRequestFor(context, wish.edits, BehindBoxes::refused));
}

}  // namespace

ExitStatus setSettings(const Context& context, const CommandLine& line) {
  return fulfil(context, line, line.arguments);
}

ExitStatus unsetSettings(const Context& context, const CommandLine& line) {
  Arguments assignments;
  for (const std::string& name : line.arguments) {
    if (name.find('=') != std::string::npos) {
      return finish(
          context.output(),
          failure(FailureCode::usage, sentence("{1} takes names alone, not \"{2}\".", {"unset", name})));
    }
    assignments.push_back(name + "=default");
  }
  return fulfil(context, line, assignments);
}

}  // namespace norvik::command
