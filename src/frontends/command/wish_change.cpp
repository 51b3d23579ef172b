// The settings that are named, and those that only go along with them.
#include "src/frontends/command/wish_change.h"

#include <algorithm>

namespace norvik::command {

ChangeRequest changeRequestFor(const Context& context, const std::vector<Edit>& edits,
                               BehindBoxes behindBoxes) {
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
  result.edit = [edits, behindBoxes](Session& session, std::vector<std::string>& notes) {
    return applyEdits(session.edited(), edits, behindBoxes, notes);
  };
  return result;
}

ExitStatus refuse(const Context& context, const std::vector<ChangeError>& errors) {
  const auto usage = std::ranges::find(errors, FailureCode::usage, &ChangeError::code);
  const ChangeError& first = usage != errors.end() ? *usage : errors.front();
  for (const ChangeError& error : errors) {
    if (&error != &first) context.complain(error.sentence);
  }
  return finish(context.output(), first);
}

}  // namespace norvik::command
