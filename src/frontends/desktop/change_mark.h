// The mark at the left of a row whose setting differs from what is stored.
#pragma once

#include <QWidget>

namespace norvik::desktop {

class ChangeMark : public QWidget {
 public:
  // `help` is what the mark means, in words.
  ChangeMark(const QString& help, QWidget* parent);

  bool isOn() const { return on_; }
  // Repaints only if that changes.
  void setOn(bool on);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString help_;
  bool on_ = false;
};

}  // namespace norvik::desktop
