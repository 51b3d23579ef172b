// The window: sidebar, pages, and below them the lock with its hint, Help and Apply. Made from the interface
// description; shows one pane; knows no setting.
#pragma once

#include <QPointer>
#include <QSet>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include "src/frontends/desktop/binding.h"
#include "src/frontends/desktop/page.h"

class QAbstractButton;
class QPushButton;
class QStackedWidget;

namespace norvik::desktop {

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

  const std::vector<Page*>& pages() const { return pages_; }
  // The binding of that outlet, page or frame; null if there is none.
  Binding* binding(const QString& outlet) const;

  // What the pages need in the window's font, whatever the size of the screen.
  QSize sizeHint() const override;

  // The tab view shows another page.
  void controlChanged(Control& control) override;

  // Whether a person is closing the window and is asked about pending changes. Each answer to that question
  // does something, and so would closing it.
  bool isLeaving() const { return leaving_; }

  // Called once, when the empty window has been painted on the screen.
  std::function<void()> painted;
  // Called when a person has closed the window and pending changes have been dealt with, right before the
  // window disappears.
  std::function<void()> closed;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  bool isFilled() const { return frame_ != nullptr; }
  void addPages();
  void addShortcuts();
  QWidget* makeFrame();
  Binding& bind(const ControlDescription& description, QWidget* parent);
  void edited();
  void followTexts(const Binding& changed);
  void followServer();
  void restoreFocus();
  bool isTabStop(const QWidget& widget) const;
  QPushButton* button(const Control& control) const;
  QAbstractButton* buttonForReturn() const;
  void assignMnemonics();
  void orderTabs();
  void showPage();
  void revealFocus(QWidget* widget);

  NVKServerPrefs& pane_;
  const InterfaceDescription& interface_;
  Page::Problem problem_;
  Sidebar* sidebar_ = nullptr;
  QStackedWidget* stack_ = nullptr;
  QWidget* frame_ = nullptr;
  std::vector<Page*> pages_;
  std::vector<std::unique_ptr<Binding>> bindings_;
  QPointer<QWidget> focusBefore_;  // a start or stop under way
  int ticksToNotes_ = 0;
  bool leaving_ = false;
};

}  // namespace norvik::desktop
