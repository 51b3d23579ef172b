// The top of a page: its icon, its title, and one line that says what the page is for. And the headings of
// its sections.
#pragma once

#include <QLabel>
#include <QWidget>

#include "src/server/mac/ui/interface_description.h"

namespace norvik::desktop {

// Words in bold, a heading to a screen reader.
class Heading : public QLabel {
 public:
  Heading(const QString& words, QWidget* parent);
};

class PageHeader : public QWidget {
 public:
  // `tab` outlives the header.
  PageHeader(const TabDescription& tab, QWidget* parent);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void fitTitle();

  Heading* title_;
};

}  // namespace norvik::desktop
