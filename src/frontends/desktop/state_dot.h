// The coloured dot before a label that shows the server's state: green while the server runs, grey while it
// does not, amber while that is changing.
#pragma once

#include <QColor>
#include <QWidget>

#include "src/server/mac/pane/pane.h"

namespace norvik::desktop {

class StateDot : public QWidget {
 public:
  // `pane` outlives the dot.
  StateDot(const NVKServerPrefs& pane, QWidget* parent);

  // Takes the colour of the pane's state. Repaints only if the colour changes.
  void showModel();
  QColor color() const { return color_; }

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const NVKServerPrefs& pane_;
  QColor color_;
};

}  // namespace norvik::desktop
