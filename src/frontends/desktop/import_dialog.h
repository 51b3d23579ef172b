// What a file of settings would change, before a person takes it over: the list, and what becomes of the
// settings that the file does not name.
#pragma once

#include <QDialog>
#include <functional>
#include <string>
#include <vector>

#include "src/frontends/shared/change/change_report.h"
#include "src/frontends/shared/edits/edits.h"

class QLabel;
class QPushButton;
class QRadioButton;

namespace norvik::desktop {

class ChangesTable;
class NoteLabel;

class ImportDialog : public QDialog {
 public:
  // What the file would do.
  struct Preview {
    std::vector<SettingChange> changes;
    bool needsLock = false;
    std::string error;  // why it cannot be taken over; empty where it can
  };
  using Source = std::function<Preview(Unnamed unnamed)>;

  // `file` is its name for a person. The source is called while the dialog is open.
  ImportDialog(QWidget* window, const std::string& file, Source source);

  // What the person has chosen.
  Unnamed unnamed() const;

 private:
  void showPreview();

  const std::string file_;
  Source source_;
  QLabel* sentence_;
  ChangesTable* list_;
  QRadioButton* toDefaults_ = nullptr;
  NoteLabel* note_;
  QPushButton* takeOver_ = nullptr;
};

}  // namespace norvik::desktop
