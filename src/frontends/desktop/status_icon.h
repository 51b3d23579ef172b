// The icon of a message: a shape of its own for each kind, in a colour that can be read on the window's.
// Drawn, so that it is sharp on every screen and follows light and dark themes.
#pragma once

#include <QColor>
#include <QWidget>

#include "src/frontends/shared/interface/window_texts.h"

class QPainter;
class QPalette;
class QRectF;

namespace norvik::desktop {

// The colour of a kind, with the contrast of text on the palette's window.
QColor statusColor(MessageKind kind, const QPalette& palette);

// Draws the icon into a square.
void drawStatusIcon(QPainter& painter, const QRectF& square, MessageKind kind, const QPalette& palette);

// The icon as a widget, as high as a line of text.
class StatusIcon : public QWidget {
 public:
  explicit StatusIcon(QWidget* parent);

  void setKind(MessageKind kind);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  MessageKind kind_ = MessageKind::note;
};

}  // namespace norvik::desktop
