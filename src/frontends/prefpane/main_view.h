// The pane's main view: messages above, the search field and the sidebar at the left, the pages at the right,
// below them the lock, the server's state, the number of pending changes and the buttons. Mirrors the model
// and has no rules of its own. A plain C++ header.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "src/frontends/prefpane/binding.h"
#include "src/frontends/prefpane/handles.h"
#include "src/frontends/prefpane/message_area.h"
#include "src/frontends/prefpane/page_view.h"
#include "src/frontends/prefpane/reach_line.h"
#include "src/frontends/prefpane/search_panel.h"
#include "src/frontends/prefpane/search_ring.h"
#include "src/frontends/prefpane/sidebar.h"
#include "src/frontends/prefpane/termination.h"
#include "src/frontends/shared/change/change_report.h"
#include "src/server/mac/pane/pane.h"

namespace norvik::prefpane {

class MainView : public ControlObserver {
 public:
  // Pane and description outlive the view. Asks `portInUse` for the notes under the ports.
  MainView(NVKServerPrefs& pane, const InterfaceDescription& interface, PortInUse portInUse);
  ~MainView() override;
  MainView(const MainView&) = delete;
  MainView& operator=(const MainView&) = delete;

  const InterfaceDescription& interface() const { return interface_; }

  // An NSView.
  void* view() const { return view_.get(); }
  MessageArea& messages() { return *messages_; }
  ReachLine& reachLine() { return *reachLine_; }
  SearchPanel& search() { return *search_; }
  // The NSView of a control; null for one that has none.
  void* viewOf(const std::string& outlet) const;

  // What a press of a button does in place of the pane's own action.
  void setCommand(const Control& button, std::function<void()> command);
  // Whether a person may use a control of a page where the model allows it.
  void setOffered(const Control& control, bool isOffered);
  // Opens the page of a control and gives it the keyboard. False if a lock keeps the page closed, and for a
  // control that is on none.
  bool showSetting(const std::string& outlet);
  // Shows what a search has found: the page, or the setting with a ring around it. What the lock keeps is
  // said, and shown as soon as the lock is open, unless a person has searched for another meanwhile.
  void showHit(const SearchHit& hit);
  // Says how many changes are pending, and marks the pages that hold some.
  void showPending(const std::vector<SettingChange>& changes);

  // The view that gets the keyboard first, an NSView.
  void* initialKeyView() const { return sidebar_.outline(); }
  // Gives it the keyboard, unless another view of this one has it.
  void takeFocus();
  // Gives the toolkit's view the frame of the model's main view.
  void fit();
  // Draws a control of the model, or the whole view, at once.
  void display(const Control& control);
  void displayIfNeeded();
  // Updates everything that the model does not tell by itself.
  void refresh();
  // To be called after a tick of the pane's timer.
  void ticked();

  // Called when a person asks for the list of pending changes; after each refresh; and when the text of the
  // server's state may be another one, and is drawn then.
  std::function<void()> showChanges;
  std::function<void()> refreshed;
  std::function<void()> serverTextChanged;

  // The model shows another page.
  void controlChanged(Control& control) override;

 private:
  void makePages(const PortInUse& portInUse, double width);
  double makeFrame(double width);
  void makeSearch(double width);
  void showHitBehindLock();
  void placeButtons(double width);
  void makeChangesButton();
  void placePages();
  void followEdits(Binding& binding);
  void edited(const Binding& binding);
  void showPage();
  void linkKeyViews();
  PageView* shownPage() const;  // null for none
  std::optional<std::size_t> pageOf(const std::string& outlet) const;

  NVKServerPrefs& pane_;
  const InterfaceDescription& interface_;
  Sidebar sidebar_;
  Handle view_;
  Handle tabs_;
  Handle changes_;
  Handle changesTarget_;
  Handle firstButton_;     // the leftmost of those at the right
  double below_ = 0;       // the height of the lines below
  double pageHeight_ = 0;  // of the highest page
  std::unique_ptr<MessageArea> messages_;
  std::unique_ptr<ReachLine> reachLine_;
  std::unique_ptr<SearchPanel> search_;
  std::vector<std::unique_ptr<PageView>> pages_;
  std::vector<std::unique_ptr<Binding>> frame_;
  std::unique_ptr<SearchRing> ring_;     // within a page; null for none
  std::optional<SearchHit> behindLock_;  // what a person has searched for and the lock hides
  int ticksToRefresh_ = 0;
  std::optional<NoSuddenTermination> pending_;  // while there are pending changes
};

}  // namespace norvik::prefpane
