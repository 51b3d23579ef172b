// A sentence that ends in an address of this computer, which can be selected, or copied with a button.
#pragma once

#include <QString>
#include <QWidget>

class QLabel;
class QPushButton;

namespace norvik::desktop {

class AddressLabel : public QWidget {
 public:
  // `name` is the object name, from which the button's is made; `copyTitle` is the button's title.
  AddressLabel(const QString& name, const QString& copyTitle, QWidget* parent);

  // Setting the same text again repaints nothing. The button is hidden while the text has no address.
  void setText(const QString& text);
  // Whether the address works, so that it may be offered for copying.
  void setCopyable(bool copyable);
  QString text() const;
  QString address() const;

 private:
  void showButton();

  QLabel* label_;
  QPushButton* copy_;
  bool copyable_ = true;
};

}  // namespace norvik::desktop
