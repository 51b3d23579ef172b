// Which settings a file gets.
#pragma once

#include <QDialog>
#include <string>

class QCheckBox;
class QRadioButton;

namespace norvik::desktop {

class ExportDialog : public QDialog {
 public:
  // `page` is the title of the page that shows, empty where it has no settings; `unapplied` the number of
  // changes that are not applied.
  ExportDialog(QWidget* window, const std::string& page, std::size_t unapplied);

  bool isPageOnly() const;
  bool isChangedOnly() const;

 private:
  QRadioButton* page_;
  QCheckBox* changedOnly_;
};

}  // namespace norvik::desktop
