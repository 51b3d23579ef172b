// Connects the ways back with the window: the buttons and menus of the rows, and the entries of the menu
// beside Help for a page and for everything. What is stored comes back through the change transaction, a
// default is entered through the controls as a person does it; nothing is applied.
#pragma once

#include <QObject>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "src/frontends/desktop/import_dialog.h"
#include "src/frontends/desktop/row_back.h"
#include "src/frontends/desktop/settings_window.h"
#include "src/frontends/desktop/window_changes.h"
#include "src/frontends/shared/change/settings_change.h"
#include "src/frontends/shared/edits/pending_edits.h"
#include "src/frontends/shared/history/reversal.h"

namespace norvik::desktop {

class WindowBack : public QObject {
 public:
  // Borrows everything. The window is filled, and the transaction has looked and loaded.
  WindowBack(SettingsWindow& window, WindowChanges& changes, NVKServerPrefs& pane, SettingsChange& change,
             Platform& computer);
  ~WindowBack() override;

  // Makes edits pending, all or none. Whether they are; if not, it was said. Those that the closed lock keeps
  // a person from need the lock, for which it asks.
  bool enter(const std::vector<Edit>& edits);
  // The same for a change that is taken back, with what a person should know about it.
  bool enter(const Reversal& reversal, std::vector<std::string>& notes);
  // What is pending, to be entered again.
  std::vector<Edit> pendingEdits();
  // The window's pane with its settings by name.
  EditedPane& edited() { return edited_; }
  // What the edits of a wish would change, for a person to agree.
  ImportDialog::Preview previewOf(const Wish& wish);
  // The names of the settings on the page that shows.
  std::vector<std::string> settingsOnPage();

 private:
  void connectRow(RowBack& row);
  WaysBack waysOf(const RowBack& row);
  const std::map<std::string, int64_t>& defaults();
  void offer(const std::vector<SettingChange>& pending);
  void offerEntries();
  void takeBackRow(const RowBack& row);
  void takeBack(const std::vector<std::string>& settings);
  void takeBackAll();
  std::vector<std::string> pendingOnPage();
  bool entered(const ChangeError& error);
  bool hasOtherThanDefault(const std::vector<std::string>& names);
  void toDefaults(const std::vector<std::string>& names);

  SettingsWindow& window_;
  WindowChanges& changes_;
  NVKServerPrefs& pane_;
  SettingsChange& change_;
  Platform& computer_;
  EditedPane edited_;
  std::vector<SettingChange> pending_;
  std::optional<std::map<std::string, int64_t>> defaults_;
};

}  // namespace norvik::desktop
