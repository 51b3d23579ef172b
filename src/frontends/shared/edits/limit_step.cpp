// The button does one of the two steps; it is pressed only where that is the wanted one.
#include "src/frontends/shared/edits/limit_step.h"

#include "src/frontends/shared/language/language.h"

namespace norvik {

ChangeError takeLimitStep(EditedPane& edited, LimitStep wanted, std::vector<std::string>& notes) {
  NVKServerPrefs& pane = edited.pane();
  const NVKServerLimits& limits = pane.m_admin_maxFiles;
  Control& button = pane.ib_admin_button_maxFAdjust;
  if (!button.isEnabled()) {
    return failure(FailureCode::notSettable, translated("the current limits of the system are not known."));
  }
  if (limits.action == (wanted == LimitStep::adjust ? kLimitAdjust : kLimitReset)) {
    edited.click(button);
    if (!pane.maxFilesChanged()) notes.emplace_back(translated("The limits stay as they are."));
  } else if (wanted == LimitStep::adjust) {
    notes.emplace_back(translated("The limits for the next start are already as high as the current ones."));
  } else if (limits.launchd.soft <= 0) {
    notes.emplace_back(translated("The next start already uses the default limits."));
  } else {
    return failure(
        FailureCode::notSettable,
        translated(
            "the limits for the next start are below the current ones and can only be adjusted; once they "
            "are adjusted, they can be reset."));
  }
  return {};
}

}  // namespace norvik
