// The search field above the sidebar, and its results, which take the sidebar's place while the field holds
// words. A plain C++ header.
#pragma once

#include <functional>
#include <vector>

#include "src/frontends/prefpane/handles.h"
#include "src/frontends/shared/search/setting_search.h"
#include "src/server/mac/pane/pane.h"

namespace norvik::prefpane {

class SearchPanel {
 public:
  // As wide as the sidebar. Pane and description outlive it.
  SearchPanel(NVKServerPrefs& pane, const InterfaceDescription& interface, double width);
  ~SearchPanel();
  SearchPanel(const SearchPanel&) = delete;
  SearchPanel& operator=(const SearchPanel&) = delete;

  // NSViews: the field, the list of results within its scroll view, and the list itself. The results are
  // hidden while the field is empty.
  void* field() const { return field_.get(); }
  void* view() const { return scroll_.get(); }
  void* results() const { return table_.get(); }
  bool isSearching() const;
  // Whether the field is edited.
  bool hasKeyboard() const;

  // Gives the field the keyboard, its words selected.
  void begin();
  // Empties the field.
  void end();

  // Called with the result that a person chose; and when the results come or go.
  std::function<void(const SearchHit& hit)> chosen;
  std::function<void()> shownChanged;

  // What the toolkit asks and reports.
  void wordsChanged();
  const std::vector<SearchHit>& hits() const { return hits_; }
  // In two lines: what a person reads, and where it is; or that nothing is found.
  std::string rowText(std::size_t row) const;
  std::size_t rows() const;
  void moveBy(int rows);
  void chooseSelected();

 private:
  NVKServerPrefs& pane_;
  const InterfaceDescription& interface_;
  Handle source_;
  Handle field_;
  Handle table_;
  Handle scroll_;
  std::vector<SearchHit> hits_;
};

}  // namespace norvik::prefpane
