// By the same reversal as an undo.
#include "src/frontends/shared/trial/trial_return.h"

#include <algorithm>

#include "src/frontends/shared/history/reversal.h"
#include "src/frontends/shared/language/language.h"

namespace norvik {

namespace {

bool needsRights(const Reversal& reversal, EditedPane& edited) {
  return reversal.limit || std::ranges::any_of(reversal.edits, [&](const Edit& edit) {
           return edited.find(edit.name)->description().isAdministrators();
         });
}

}  // namespace

bool mayEndConnections(const NVKServerPrefs& pane, const std::vector<SettingChange>& changes) {
  const Control* const controls[] = {&pane.ib_admin_chkbox_nvkEnabled, &pane.ib_admin_chkbox_nvkPort,
                                     &pane.ib_admin_edbox_nvkPort,     &pane.ib_admin_chkbox_rdpEnabled,
                                     &pane.ib_admin_chkbox_rdpPort,    &pane.ib_admin_edbox_rdpPort,
                                     &pane.ib_admin_chkbox_multiUser};
  return std::ranges::any_of(changes, [&](const SettingChange& change) {
    return std::ranges::count(controls, change.outlet, &Control::name) > 0;
  });
}

TrialReturn takeBackSettings(const std::vector<RecordedSetting>& settings, EditedPane& edited,
                             SettingsChange& change, Platform& computer,
                             const InterfaceDescription& interface, ChangeDecisions& person) {
  TrialReturn result;
  change.takeOver();
  const Reversal reversal = reversalOf(computer, interface, settings, ChangedAgain::leftAlone);
  edited.pane().updateGui(false, false);  // a shadow has used what the panes of a process share
  result.notes = reversal.notes;
  if (!reversal.errors.empty()) {
    result.report.error = reversal.errors.front();
    return result;
  }
  if (needsRights(reversal, edited) && !edited.pane().authorized()) {
    result.report.error = failure(FailureCode::notAllowed,
                                  translated("This needs administrator rights, which were not granted."));
    return result;
  }
  result.report.error = applyReversal(edited, reversal, result.notes);
  if (result.report.ok() && !reversal.empty()) result.report = change.apply(person);
  return result;
}

}  // namespace norvik
