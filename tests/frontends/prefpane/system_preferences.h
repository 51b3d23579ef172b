// The real System Preferences with the pane installed for a sandbox's user, worked by mouse and looked at by
// its pixels.
#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>

#include "tests/frontends/desktop/program.h"

namespace norvik::prefpane {

// Where things stand in the window, in pixels from its upper left corner, or from its lower edge where
// negative.
inline constexpr QPoint kShowAll(40, 20);
inline constexpr QPoint kIcon(532, 70);  // of the pane, among the others
inline constexpr QPoint kLock(40, -41);
inline constexpr QPoint kApply(540, -41);
inline constexpr QRect kPage(190, 50, 390, 360);

// Rows of the sidebar.
enum Row { kUserImage = 1, kMouse = 2, kServer = 4, kNorvikClients = 5, kNotifications = 10, kRows = 11 };

class SystemPreferences : public desktop::Program {
 protected:
  // Starts the program and waits for its window.
  void open();
  // Opens the pane by a click on its icon, and waits until it stands in the window.
  void openPane();
  // Ends it as its window's close button does; answers whether it did.
  bool close();

  void click(const QPoint& at, int times = 1);
  // The same in another window.
  void clickIn(const QString& window, const QPoint& at, int times = 1);
  void clickRow(int row);
  // How the window looks, or a part of it.
  QImage look();
  // The page's, once it stands still.
  QImage lookOfPage();
  // The same once it has become another by what is done.
  QImage lookAfter(const std::function<void()>& deed);
  QImage lookOfRow(int row) {
    return lookAfter([&] { clickRow(row); });
  }
  QImage lookAfterClick(const QPoint& at) {
    return lookAfter([&] { click(at); });
  }
  // A place in the field of the page that can be typed into, the only thing on it that is white; the origin
  // where there is none.
  QPoint field();
  // The darkest there is in the words of a row, from 0 to 255.
  int darkest(int row);
  // Whether it becomes true while the mouse trembles: the toolkit may leave input that it has read lying
  // until the next one comes.
  bool eventually(const std::function<bool()>& condition);

  // The frontmost window of the program other than the main one; empty where there is none.
  QString panelWindow();

 private:
  QSize size();
  // Whether the program sleeps; one that the machine has made wait in the midst of drawing does not.
  bool awaitsEvents();
  QString window_;
};

}  // namespace norvik::prefpane
