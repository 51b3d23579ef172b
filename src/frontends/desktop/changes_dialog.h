// The list of pending changes: what Apply would change, write, run and tell. From it a person goes to a
// setting, takes changes back, or applies all of them.
#pragma once

#include <QDialog>
#include <functional>
#include <string>

#include "src/frontends/shared/change/change_report.h"

class QLabel;
class QPushButton;
class QVBoxLayout;

namespace norvik::desktop {

class ChangesTable;

class ChangesDialog : public QDialog {
 public:
  // What the list asks for; each is called while it is open.
  struct Source {
    std::function<Preview()> preview;
    std::function<void(const std::string& setting)> takeBack;
    std::function<void()> takeBackAll;
    // Whether what is left may be put into force on trial; none means no.
    std::function<bool()> isTrialOffered = {};
  };
  // How the list was left; the result of exec().
  enum Choice { kClose, kApply, kGoToSetting, kApplyOnTrial };

  ChangesDialog(QWidget* window, Source source);

  // The control of the chosen row; empty where none is chosen.
  std::string outlet() const;

 private:
  void addButtons(QVBoxLayout& column);
  QPushButton* addButton(std::string_view words, const char* name);
  void showPreview();
  void showChanges();
  const SettingChange* chosen() const;
  void takeBackChosen();

  Source source_;
  Preview preview_;
  ChangesTable* list_;
  QLabel* effects_;
  QPushButton* goTo_ = nullptr;
  QPushButton* takeBack_ = nullptr;
  QPushButton* takeBackAll_ = nullptr;
  QPushButton* applyOnTrial_ = nullptr;
  QPushButton* apply_ = nullptr;
};

// What a change writes, runs, tells and ends, in headings and lines as rich text; empty where it does
// nothing.
QString effectsOf(const Preview& preview);

}  // namespace norvik::desktop
