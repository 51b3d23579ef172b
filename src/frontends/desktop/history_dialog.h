// The history of changes: the entries, the settings of the chosen one beside what they are now, and a button
// that begins to take it back.
#pragma once

#include <QDialog>
#include <functional>
#include <string>
#include <vector>

#include "src/frontends/shared/history/history_view.h"

class QLabel;
class QPushButton;
class QTreeWidget;

namespace norvik::desktop {

class NoteLabel;

class HistoryDialog : public QDialog {
 public:
  // What is shown of one entry.
  struct Chosen {
    std::vector<HistoryRow> rows;
    std::string note;      // what was changed again since, or why it cannot be taken back
    bool canUndo = false;  // there is something to take back
  };
  struct Source {
    std::vector<HistoryEntry> entries;  // the newest first
    std::string note;                   // what is wrong with the history as a whole
    std::function<Chosen(const HistoryEntry& entry)> look;
  };

  // The result of exec() is Accepted where a person wants to take the chosen entry back.
  HistoryDialog(QWidget* window, const InterfaceDescription& interface, Source source);

  // Null for none.
  const HistoryEntry* chosen() const;

 private:
  void showEntries(const InterfaceDescription& interface);
  void showChosen();

  Source source_;
  QTreeWidget* entries_;
  QTreeWidget* settings_;
  NoteLabel* note_;
  QPushButton* undo_ = nullptr;
};

}  // namespace norvik::desktop
