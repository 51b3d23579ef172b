// The panel behind the rows of a section, so that they read as a group. It lies in the page's grid under the
// rows, takes no clicks and no focus.
#pragma once

#include <QWidget>

namespace norvik::desktop {

class SectionPanel : public QWidget {
 public:
  explicit SectionPanel(QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace norvik::desktop
