// The lock button in the window: the style's plain button with the picture on it, tinted and darkened by the
// pane module's own compositing.
#pragma once

#include <QAbstractButton>
#include <QIcon>

#include "src/server/mac/ui/nvk_button.h"

namespace norvik::desktop {

class LockButton : public QAbstractButton {
 public:
  // `model` outlives the widget.
  LockButton(NVKButton& model, QWidget* parent);

  // Repaints if the model's picture was replaced.
  void showModel();

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  const QIcon& picture();

  NVKButton& model_;
  PictureRef decoded_;  // what icon_ was decoded from
  QIcon icon_;
};

}  // namespace norvik::desktop
