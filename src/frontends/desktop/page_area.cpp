// The least size, from the page, the font and the screen.
#include "src/frontends/desktop/page_area.h"

#include <QEvent>
#include <QScreen>
#include <QScrollBar>

namespace norvik::desktop {

namespace {

constexpr int kLeastLines = 12;
// Beside the page there is the sidebar, below it the line of buttons.
constexpr double kMostOfScreenWidth = 0.65;
constexpr double kMostOfScreenHeight = 0.5;

}  // namespace

PageArea::PageArea(QWidget* page, const QString& name) {
  setAccessibleName(name);
  for (QScrollBar* bar : {verticalScrollBar(), horizontalScrollBar()}) bar->setAccessibleName(name);
  setWidget(page);
  setWidgetResizable(true);
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
}

QSize PageArea::minimumSizeHint() const {
  const int width = widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width();
  const QSizeF room = screen()->availableSize();
  const QSize most = QSizeF(room.width() * kMostOfScreenWidth, room.height() * kMostOfScreenHeight).toSize();
  return QSize(width, kLeastLines * fontMetrics().height()).boundedTo(most);
}

// The page asks for its layout anew when what it needs has changed.
bool PageArea::event(QEvent* event) {
  if (event->type() == QEvent::LayoutRequest) updateGeometry();
  return QScrollArea::event(event);
}

}  // namespace norvik::desktop
