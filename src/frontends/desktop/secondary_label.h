// A label for what matters less than the settings: notes, the names of a slider's ends. Its grey stays
// legible on light and on dark windows.
#pragma once

#include <QLabel>

namespace norvik::desktop {

class SecondaryLabel : public QLabel {
 public:
  SecondaryLabel(const QString& words, QWidget* parent);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void chooseColor();
};

}  // namespace norvik::desktop
