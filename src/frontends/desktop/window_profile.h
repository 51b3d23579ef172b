// Exports what the window shows as a profile, and imports one: a file is chosen, what it would change is
// listed, and what a person takes over is pending like an edit.
#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <string>

#include "src/frontends/desktop/settings_window.h"
#include "src/frontends/desktop/window_back.h"
#include "src/frontends/desktop/window_changes.h"
#include "src/frontends/shared/profile/profile.h"

namespace norvik::desktop {

class WindowProfile : public QObject {
 public:
  // Borrows everything. The window is filled.
  WindowProfile(SettingsWindow& window, WindowChanges& changes, WindowBack& edits, NVKServerPrefs& pane,
                SettingsChange& change, Platform& computer);

  void exportProfile();
  void importProfile();

  // Which file a person means; empty for none. The desktop's own dialogs, unless a test answers.
  std::function<QString()> chooseNew;
  std::function<QString()> chooseExisting;

 private:
  void write(const QString& path, bool isPageOnly, bool isChangedOnly);
  void say(MessageKind kind, std::string sentence, std::string details = {});
  void sayFaults(const QString& path, const std::vector<ProfileFault>& faults);
  void takeOver(const QString& path, const ProfileSettings& profile);
  std::string pageTitle() const;

  SettingsWindow& window_;
  WindowChanges& changes_;
  WindowBack& edits_;
  NVKServerPrefs& pane_;
  SettingsChange& change_;
  Platform& computer_;
};

}  // namespace norvik::desktop
