// A ring around the setting that a search has led to, until a person does something else.
#pragma once

#include <QPointer>
#include <QWidget>

namespace norvik::desktop {

class SearchRing : public QWidget {
 public:
  // Around `widget`, over the page that it is on, until the keyboard focus goes to another widget than it has
  // now, or the setting is hidden or gone.
  SearchRing(QWidget* widget, QWidget* page);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void follow();

  QPointer<QWidget> widget_;
};

}  // namespace norvik::desktop
