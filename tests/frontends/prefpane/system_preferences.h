// The real System Preferences with the pane installed for a sandbox's user, operated by mouse and keyboard
// and checked by its pixels.
#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>
#include <optional>

#include "src/frontends/shared/interface/window_texts.h"
#include "tests/frontends/desktop/program.h"

namespace norvik::prefpane {

// Where things are in the window, in pixels from its upper left corner; from its lower edge if negative.
inline constexpr QPoint kShowAll(40, 20);
inline constexpr QPoint kIcon(532, 70);  // of the pane, among the others
inline constexpr QPoint kLock(40, -54);
inline constexpr QPoint kApply(540, -67);
inline constexpr QPoint kBelowMessage(0, 55);  // how far down everything is while there is a message
inline constexpr QRect kPage(190, 50, 390, 360);

// Rows of the sidebar.
enum Row { kUserImage = 1, kMouse = 2, kServer = 4, kNorvikClients = 5, kNotifications = 10, kRows = 11 };

class SystemPreferences : public desktop::Program {
 protected:
  // Starts the program and waits for its window.
  void open();
  // Opens the pane by a click on its icon, and waits until it is in the window.
  void openPane();
  // Ends it as its window's close button does; whether it ended.
  bool close();

  void click(const QPoint& at, int times = 1);
  // The same in another window.
  void clickIn(const QString& window, const QPoint& at, int times = 1);
  // Where the rows are so many pixels further down.
  void clickRow(int row, int down = 0);
  // A picture of the window.
  QImage look();
  // A picture of the page, once it no longer changes.
  QImage lookOfPage();
  // The same once the deed has changed it.
  QImage lookAfter(const std::function<void()>& deed);
  QImage lookOfRow(int row) {
    return lookAfter([&] { clickRow(row); });
  }
  QImage lookAfterClick(const QPoint& at) {
    return lookAfter([&] { click(at); });
  }
  // A place in the page's text field, the only white thing on it; the origin if there is none.
  QPoint field();
  // The darkest pixel in the words of a row, from 0 to 255.
  int darkest(int row, int down = 0);
  // The message above the pages, by its colour; nothing while there is none.
  std::optional<MessageKind> messageKind();
  // Whether it becomes true while the mouse trembles: the toolkit may leave input unprocessed until the next
  // one comes.
  bool eventually(const std::function<bool()>& condition);

  // The frontmost window of the program other than the main one; empty if there is none.
  QString panelWindow();

 private:
  QSize size();
  // Whether the program sleeps; one that was interrupted while drawing does not.
  bool awaitsEvents();
  QString window_;
};

}  // namespace norvik::prefpane
