// The search field above the sidebar. While it holds words, the results are shown in the sidebar's place.
#pragma once

#include <QLineEdit>
#include <QListWidget>
#include <QStackedWidget>
#include <QWidget>
#include <functional>
#include <vector>

#include "src/frontends/shared/search/setting_search.h"
#include "src/server/mac/pane/pane.h"

namespace norvik::desktop {

class SearchPanel : public QWidget {
 public:
  // Takes the sidebar in. `pane` and `interface` outlive the panel.
  SearchPanel(NVKServerPrefs& pane, const InterfaceDescription& interface, QWidget* sidebar, QWidget* parent);

  // Gives the field the keyboard, its words selected.
  void begin();
  // Empties the field and shows the sidebar.
  void end();
  QLineEdit& field() { return *field_; }
  QListWidget& results() { return *results_; }

  // Called with the result that a person chose.
  std::function<void(const SearchHit& hit)> chosen;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void search();
  void choose(int row);
  bool keyPressed(int key);

  NVKServerPrefs& pane_;
  const InterfaceDescription& interface_;
  QLineEdit* field_;
  QStackedWidget* lists_;
  QListWidget* results_;
  std::vector<SearchHit> hits_;
};

}  // namespace norvik::desktop
