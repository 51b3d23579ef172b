// The button beside Help with what a person needs now and then: ways back, the history, profiles, the change
// as a command. Each entry is hidden until somebody says what it does.
#pragma once

#include <QPushButton>
#include <functional>
#include <map>
#include <utility>
#include <vector>

class QAction;
class QMenu;

namespace norvik::desktop {

// In the order of the menu.
enum class MoreEntry {
  takeBackPage,
  takeBackAll,
  pageToDefaults,
  allToDefaults,
  applyOnTrial,
  stopOnTrial,
  history,
  exportProfile,
  importProfile,
  copyCommand,
};

class MoreMenu : public QPushButton {
 public:
  explicit MoreMenu(QWidget* parent);

  // What an entry does; shows it.
  void setEntry(MoreEntry entry, std::function<void()> act);
  void setOffered(MoreEntry entry, bool isOffered);

  // Called right before the menu opens, to offer what can be done now.
  void whenOpening(std::function<void()> act) { opening_.push_back(std::move(act)); }

 private:
  QMenu* menu_;
  std::map<MoreEntry, QAction*> entries_;
  std::map<MoreEntry, std::function<void()>> acts_;
  std::vector<std::function<void()>> opening_;
};

}  // namespace norvik::desktop
