// A sentence that ends in an address of this computer, which a person can select, or copy with a button.
#pragma once

#include <QString>
#include <QWidget>

class QLabel;
class QPushButton;

namespace norvik::desktop {

class AddressLabel : public QWidget {
 public:
  // `name` is the object's name, from which the button's is made; `copyTitle` what the button says.
  AddressLabel(const QString& name, const QString& copyTitle, QWidget* parent);

  // Setting the text it has repaints nothing. Without an address in it there is nothing to copy.
  void setText(const QString& text);
  QString text() const;
  QString address() const;

 private:
  QLabel* label_;
  QPushButton* copy_;
};

}  // namespace norvik::desktop
