// What Apply would do, found out by letting a second pane do it to nothing.
#include <algorithm>
#include <iterator>

#include "src/frontends/shared/change/settings_change_applying.h"

namespace norvik {

namespace {

// Makes the shadow the pane's twin: what it has loaded, and what its controls hold.
void copyState(NVKServerPrefs& pane, NVKServerPrefs& shadow) {
  for (const Setting* row : storedRows()) row->setBaseline(shadow, row->baseline(pane));
  for (Control* control : pane.outlets()) restoreState(*control, *shadow.outlet(control->name()));
  shadow.m_admin_maxFiles = pane.m_admin_maxFiles;
}

bool endsConnections(const NVKServerPrefs& pane) {
  constexpr Control NVKServerPrefs::*kControls[] = {
      &NVKServerPrefs::ib_admin_edbox_nvkPort,    &NVKServerPrefs::ib_admin_chkbox_nvkEnabled,
      &NVKServerPrefs::ib_admin_edbox_rdpPort,    &NVKServerPrefs::ib_admin_chkbox_rdpEnabled,
      &NVKServerPrefs::ib_admin_chkbox_multiUser,
  };
  return pane.m_serverPid != -1 && std::ranges::any_of(kControls, [&](Control NVKServerPrefs::*control) {
           return pane.differsFromStored(pane.*control);
         });
}

}  // namespace

Preview SettingsChange::preview() {
  State& state = *state_;
  NVKServerPrefs& pane = state.pane;
  Preview preview;
  preview.changes = pending();
  preview.groups = changedGroups(pane);
  preview.endsConnections = endsConnections(pane);
  preview.needsRestart =
      wouldSave(pane, Group::limit) || pane.differsFromStored(pane.ib_admin_chkbox_noQuartz);
  if (preview.groups.empty()) return preview;
  {
    ShadowPane shadow = state.shadow();
    copyState(pane, shadow.pane());
    shadow.pane().applyAllChanges();
    const Effects& effects = shadow.effects();
    for (const FileState& file : state.files) {
      const std::string written = writtenPath(pane, file.file, file.path);
      const bool byTool = file.file.byTool && wouldSave(pane, file.file);
      if (byTool || std::ranges::count(effects.written, written) > 0) preview.files.push_back(file.path);
    }
    std::ranges::copy_if(effects.launches, std::back_inserter(preview.commands),
                         [](const Launch& launch) { return !launch.reports; });
    ChangeReport told;
    addTold(effects, true, true, told);
    preview.told = told.told;
  }
  state.refresh();
  return preview;
}

}  // namespace norvik
