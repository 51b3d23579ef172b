// A ring around the setting that a search has led to, until a person does something else.
#pragma once

#include <QPointer>
#include <QWidget>

namespace norvik::desktop {

class SearchRing : public QWidget {
 public:
  // Around `widget`, over its parent, until the keyboard focus leaves it, it is hidden or it is gone.
  explicit SearchRing(QWidget* widget);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void follow();

  QPointer<QWidget> widget_;
};

}  // namespace norvik::desktop
