// The window: sidebar, pages, and below them the lock with its hint, Help and Apply. Lays out the interface
// description and mirrors one pane; knows no setting.
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
  // The bare window, in its size, so that it can be shown before anything is loaded. `pane` and `interface`
  // outlive it.
  SettingsWindow(NVKServerPrefs& pane, const InterfaceDescription& interface, Page::Problem problem);
  ~SettingsWindow() override;

  // Puts everything into the window. Once, when the pane is awake.
  void fill();

  // Brings marks and notes up to the model. Each edit does it by itself.
  void refresh();
  // The same for the page that shows, after a tick of the pane; the rest only every few seconds, as it takes
  // longer and asks the computer.
  void ticked();

  // The page of the last time, as a row of the sidebar: shown now, or once the lock that keeps it is open.
  // What is to be remembered for the next time.
  void restorePage(int row);
  int pageToRestore() const;

  const std::vector<Page*>& pages() const { return pages_; }
  // The binding of that outlet, page or frame; null where there is none.
  Binding* binding(const QString& outlet) const;

  // What the pages want in the window's font, whatever the screen has.
  QSize sizeHint() const override;

  // The tab view shows another page.
  void controlChanged(Control& control) override;

  // Called once, when the bare window stands painted on the screen.
  std::function<void()> painted;
  // Called when a person closed the window and what was pending has been settled, right before the window
  // goes.
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
  QPointer<QWidget> focusBefore_;  // a start or stop that is under way
  int ticksToNotes_ = 0;
  bool leaving_ = false;
};

}  // namespace norvik::desktop
