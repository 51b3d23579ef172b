// A pane and its window with the change transaction between them, used by clicks, keys and drags at the
// widgets that have the outlets' names.
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "src/frontends/desktop/qt_platform.h"
#include "src/frontends/desktop/settings_window.h"
#include "src/frontends/desktop/window_back.h"
#include "src/frontends/desktop/window_changes.h"
#include "src/frontends/desktop/window_history.h"
#include "src/frontends/desktop/window_profile.h"
#include "src/frontends/desktop/window_reach.h"
#include "src/frontends/desktop/window_server.h"
#include "src/frontends/desktop/window_trial.h"
#include "src/frontends/shared/change/recording_platform.h"
#include "src/frontends/shared/change/settings_change.h"
#include "src/frontends/shared/history/history.h"
#include "src/frontends/shared/language/translated_interface.h"
#include "src/server/mac/pane/pane.h"
#include "tests/support/shipped_interface.h"

namespace norvik::desktop {

// The computer that a panel works on, and what of it belongs to the window.
struct PanelComputer {
  Platform& platform;
  QtAlertPanels& alerts;
  QtDrawing& drawing;
  const Busy& busy;
  ComputerServices services;
  UserState& state;
  std::function<void(std::chrono::milliseconds)> pause;
  Countdown::Clock clock;
};

class Panel {
 public:
  // Shown on the screen and active. Borrows everything of the computer.
  explicit Panel(const PanelComputer& computer);
  ~Panel();
  Panel(const Panel&) = delete;
  Panel& operator=(const Panel&) = delete;

  InterfaceDescription interface = translatedInterface(shippedInterface());
  History records;
  RecordingPlatform recording;
  NVKServerPrefs pane{interface};
  SettingsChange change;
  SettingsWindow window;
  std::unique_ptr<WindowChanges> changes;
  std::unique_ptr<WindowBack> back;
  std::unique_ptr<WindowProfile> profile;
  std::unique_ptr<WindowHistory> history;
  std::unique_ptr<WindowServer> server;
  std::unique_ptr<WindowTrial> trial;
  std::unique_ptr<WindowReach> reach;  // looks at once, on this thread

  Control& control(const char* outlet);
  // The widget of that outlet; a test failure and null if there is none.
  QWidget* widget(const char* outlet);
  template <typename Widget>
  Widget* as(const char* outlet) {
    return qobject_cast<Widget*>(widget(outlet));
  }

  // The clock's next tick, now.
  void tick();
  // Lets every event that is under way arrive.
  void settle();

  // Clicks on the row of the sidebar with that title, in that group ("user" or "admin").
  void choosePage(const std::string& group, const std::string& title);
  // Chooses the page of the control.
  void choosePageOf(const char* outlet);
  // Clicks on the middle of a button, or on the mark of a box.
  void click(const char* outlet);
  void unlock() { click("ib_button_Auth"); }
  // Clicks into a field and types over what it holds.
  void type(const char* outlet, const QString& words);
  // Takes the handle of a slider and drops it at a value.
  void drag(const char* outlet, int value);
  // Opens a pop-up and clicks on an item.
  void choose(const char* outlet, int item);
  // Presses a key where the focus is.
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  // Turns the wheel over a widget, away from the person.
  void turnWheel(QWidget* over);
};

// Answers the alert panels that come up while it lives, and keeps what they said.
class Answers : public QObject {
 public:
  // Presses a button by its words, or a key in the panel.
  explicit Answers(QString button);
  explicit Answers(Qt::Key key);
  // By the close button of its window.
  struct Close {};
  explicit Answers(Close);

  struct Seen {
    QString title;
    QString message;
    QStringList buttons;  // sorted: their order is the style's
    bool sheet = false;   // modal to the window of the panel
  };
  std::vector<Seen> seen;

  // By any act; it is called again until the panel is gone.
  explicit Answers(std::function<void(QWidget& panel)> act);

 private:
  void look();
  std::function<void(QWidget& panel)> act_;
  QPointer<QWidget> last_;  // each panel is seen once
};

}  // namespace norvik::desktop
