// The window: sidebar, messages, pages, and below them the lock with its hint, the server's state and
// address, Help, the number of pending changes and Apply. Made from the interface description; shows one
// pane; knows no setting.
#pragma once

#include <QPointer>
#include <QSet>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "src/frontends/desktop/binding.h"
#include "src/frontends/desktop/page.h"
#include "src/frontends/shared/search/setting_search.h"

class QAbstractButton;
class QLabel;
class QLayout;
class QPushButton;
class QStackedWidget;

namespace norvik::desktop {

class AddressLabel;
class MessageArea;
class MoreMenu;
class ReachCard;
class ReachLine;
class SearchPanel;
class Sidebar;

class SettingsWindow : public QWidget, public ControlObserver {
 public:
  // The empty window in its size, which can be shown before anything is loaded. `pane` and `interface`
  // outlive it.
  SettingsWindow(NVKServerPrefs& pane, const InterfaceDescription& interface, Page::Problem problem);
  ~SettingsWindow() override;

  // Puts everything into the window. Once, when the pane is awake.
  void fill();

  // Updates marks and notes from the model. Each edit does so by itself.
  void refresh();
  // The same for the visible page, after a tick of the pane; for the rest only every few seconds, since it
  // takes longer and asks the computer.
  void ticked();

  // The page of the last session, as a row of the sidebar: shown now, or when its lock is opened. And the row
  // to remember for the next session.
  void restorePage(int row);
  int pageToRestore() const;

  const InterfaceDescription& interface() const { return interface_; }
  const std::vector<Page*>& pages() const { return pages_; }
  // The binding of that outlet, page or frame; null if there is none.
  Binding* binding(const QString& outlet) const;

  // Above the pages. Null before fill().
  MessageArea& messages() { return *messages_; }
  // The number of pending changes, beside Apply. Null before fill().
  QPushButton& changesButton() { return *changes_; }
  // The menu beside Help. Null before fill().
  MoreMenu& moreMenu() { return *more_; }
  // The page that shows.
  Page& page() const;
  // The server's state and address, beside the lock. Null before fill().
  ReachLine& reachLine() { return *reachLine_; }
  // The ladder's short result, on the server's page. Null before fill().
  ReachCard& reachCard() { return *reachCard_; }

  // What a press of a button does in place of the pane's own action.
  void setCommand(const Control& button, std::function<void()> command);
  // Whether a person may use a control where the pane allows it.
  void setOffered(const Control& control, bool isOffered);
  // The page of a control, in the order of the description; nothing for one that is on none.
  std::optional<std::size_t> pageOf(const std::string& outlet) const;
  // Opens the page of a control and gives it the keyboard focus. False if a lock keeps the page closed.
  bool showSetting(const std::string& outlet);
  // Whether the note under a field says that Apply would refuse it.
  bool isRefused(const Control& field) const;
  // The label of an address.
  AddressLabel& addressLabel(const Control& address) const;
  // How many changes there are, and how many each page holds, in the order of the description: marks those
  // that hold some.
  void showPending(std::size_t all, const std::vector<std::size_t>& byPage);

  // What the pages need in the window's font, whatever the size of the screen.
  QSize sizeHint() const override;

  // The tab view shows another page.
  void controlChanged(Control& control) override;

  // Whether the pane is being left. Each answer to a question of its own does something then, and so would
  // closing the question.
  bool isLeaving() const { return leaving_; }
  // Closes the window without asking anybody; pending changes are lost.
  void closeWithoutAsking();

  // Called once, when the empty window has been painted on the screen.
  std::function<void()> painted;
  // Asked when a person closes the window, before the pane is left: whether it may go. None means yes.
  std::function<bool()> mayLeave;
  // Called when a person has closed the window and pending changes have been dealt with, right before the
  // window disappears.
  std::function<void()> closed;
  // Called after each update from the model: at an edit, and every few seconds.
  std::function<void()> refreshed;
  // Called when the text of the server's state has changed, also while a start or stop is under way.
  std::function<void()> serverTextChanged;

 protected:
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  bool isFilled() const { return frame_ != nullptr; }
  void addPages();
  void addShortcuts();
  QWidget* makeFrame();
  QPushButton* makeChangesButton(QWidget* frame);
  QLayout* makeHintColumn(QLabel* hint, QWidget* frame);
  Binding& bind(const ControlDescription& description, QWidget* parent);
  void edited(const Binding& binding);
  void followTexts(const Binding& changed);
  void followServer();
  void restoreFocus();
  bool isTabStop(const QWidget& widget) const;
  QPushButton* button(const Control& control) const;
  QAbstractButton* buttonForReturn() const;
  void assignMnemonics();
  void orderTabs();
  void showPage();
  void showMenuAtFocus();
  void showHit(const SearchHit& hit);
  void showHitBehindLock();
  void followMessages();
  void revealFocus(QWidget* widget);

  NVKServerPrefs& pane_;
  const InterfaceDescription& interface_;
  Page::Problem problem_;
  Sidebar* sidebar_ = nullptr;
  SearchPanel* search_ = nullptr;
  MessageArea* messages_ = nullptr;
  QStackedWidget* stack_ = nullptr;
  QPushButton* changes_ = nullptr;
  MoreMenu* more_ = nullptr;
  ReachLine* reachLine_ = nullptr;
  ReachCard* reachCard_ = nullptr;
  QWidget* frame_ = nullptr;
  std::vector<Page*> pages_;
  std::vector<std::unique_ptr<Binding>> bindings_;
  QPointer<QWidget> focusBefore_;  // a start or stop under way
  int ticksToNotes_ = 0;
  std::optional<SearchHit> behindLock_;  // what a person has searched for and the lock hides
  bool asking_ = false;
  bool leaving_ = false;
};

}  // namespace norvik::desktop
