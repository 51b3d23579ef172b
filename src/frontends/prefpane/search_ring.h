// A ring around the setting that a search has led to, until a person does something else. A plain C++ header.
#pragma once

#include "src/frontends/prefpane/handles.h"

namespace norvik::prefpane {

class SearchRing {
 public:
  // Around an NSView that has just got the keyboard, over the page that it is on. Both live as long as the
  // ring.
  SearchRing(void* control, void* page);
  ~SearchRing();
  SearchRing(const SearchRing&) = delete;
  SearchRing& operator=(const SearchRing&) = delete;

  // Whether the ring still belongs there: the keyboard is where it was, and the control can be seen. Moves
  // it after its control.
  bool follow();
  // An NSView.
  void* view() const { return view_.get(); }

 private:
  Handle control_;
  Handle view_;
  void* focus_;  // what had the keyboard, only to be compared
};

}  // namespace norvik::prefpane
