// norvikctl set and unset: what a person wishes settings to be, applied together.
#include <algorithm>

#include "src/frontends/command/change.h"
#include "src/frontends/command/command_line.h"
#include "src/frontends/command/edits.h"

namespace norvik::command {

namespace {

ChangeRequest changeRequestFor(const Context& context, const std::vector<Edit>& edits) {
  ChangeRequest result;
  result.requiresUnlock = false;
  const auto descriptions = settingsOf(context.interface);
  for (const Edit& edit : edits) {
    if (edit.because.empty()) {
      result.requested.push_back(edit.name);
    } else {
      result.reasons[edit.name] = edit.because;
    }
    const auto found = std::ranges::find(descriptions, edit.name, &SettingDescription::name);
    if (found->isAdministrators()) result.requiresUnlock = true;
  }
  result.edit = [edits](Session& session, std::vector<std::string>& notes) {
    return applyEdits(session, edits, notes);
  };
  return result;
}

// Every mistake is shown; a wrong line counts for more than a wrong value.
ExitStatus refuse(const Context& context, const std::vector<ChangeError>& errors) {
  const auto usage = std::ranges::find(errors, FailureCode::usage, &ChangeError::code);
  const ChangeError& first = usage != errors.end() ? *usage : errors.front();
  for (const ChangeError& error : errors) {
    if (&error != &first) context.complain(error.sentence);
  }
  return finish(context.output(), first);
}

ExitStatus fulfil(const Context& context, const Arguments& assignments, bool dryRun) {
  const Wish wish = wishOf(context, assignments);
  if (!wish.errors.empty()) return refuse(context, wish.errors);
  return change(context, changeRequestFor(context, wish.edits), dryRun);
}

}  // namespace

ExitStatus setSettings(const Context& context, const CommandLine& line) {
  return fulfil(context, line.arguments, line.dryRun);
}

ExitStatus unsetSettings(const Context& context, const CommandLine& line) {
  Arguments assignments;
  for (const std::string& name : line.arguments) {
    if (name.find('=') != std::string::npos) {
      return finish(context.output(),
                    failure(FailureCode::usage, "unset takes names alone, not \"" + name + "\"."));
    }
    assignments.push_back(name + "=default");
  }
  return fulfil(context, assignments, line.dryRun);
}

}  // namespace norvik::command
