// The minimum size, computed from the page, the font and the screen.
#include "src/frontends/desktop/page_area.h"

#include <QEvent>
#include <QScreen>
#include <QScrollBar>
#include <algorithm>

#include "src/frontends/desktop/page.h"

namespace norvik::desktop {

namespace {

constexpr int kLeastLines = 12;
// Beside the page there is the sidebar, below it the line of buttons.
constexpr double kMostOfScreenWidth = 0.65;
constexpr double kMostOfScreenHeight = 0.5;

}  // namespace

PageArea::PageArea(Page* page, const QString& name) : page_(page) {
  setAccessibleName(name);
  for (QScrollBar* bar : {verticalScrollBar(), horizontalScrollBar()}) bar->setAccessibleName(name);
  setWidget(page);
  setWidgetResizable(true);
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setAlignment(Qt::AlignHCenter | Qt::AlignTop);
  limitWidth();
}

QSize PageArea::minimumSizeHint() const {
  const int width = widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width();
  const QSizeF room = screen()->availableSize();
  const QSize most = QSizeF(room.width() * kMostOfScreenWidth, room.height() * kMostOfScreenHeight).toSize();
  return QSize(width, kLeastLines * fontMetrics().height()).boundedTo(most);
}

// Never less than the page needs.
void PageArea::limitWidth() {
  const int most = std::max(page_->mostWidth(), page_->minimumSizeHint().width());
  if (page_->maximumWidth() != most) page_->setMaximumWidth(most);
}

// The page requests a layout when its own minimum size has changed.
bool PageArea::event(QEvent* event) {
  if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::FontChange) {
    limitWidth();
    updateGeometry();
  }
  return QScrollArea::event(event);
}

}  // namespace norvik::desktop
