// The gestures, as events of the mouse and the keyboard.
#include "tests/frontends/desktop/panel.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QStyleOptionSlider>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include "tests/support/waiting.h"

namespace norvik::desktop {

namespace {

constexpr int kMilliseconds = static_cast<int>(kPatience.count());

// Port 4321 is the one that another program has.
bool inUse(int64_t port) {
  return port == 4321;
}

ChangeOptions options(const ComputerServices& services, ChangeRecords& records) {
  ChangeOptions options{records};
  options.portInUse = inUse;
  options.waitForTools = [&tools = services.tools](std::chrono::milliseconds limit) {
    return tools.wait(limit);
  };
  return options;
}

NVKServerPrefs& awake(NVKServerPrefs& pane, SettingsChange& change) {
  change.look();
  pane.awakeFromNib();
  change.loaded();
  return pane;
}

}  // namespace

Panel::Panel(const PanelComputer& computer)
    : records(computer.state, "window"),
      recording(computer.platform, computer.alerts, computer.drawing, RecordingMode::real),
      change(pane, recording, computer.platform, interface, computer.services,
             options(computer.services, records)),
      window(awake(pane, change), interface, [this](const ControlDescription& field) {
        return portFieldNote(pane, interface, control(field.outlet.c_str()), inUse);
      }) {
  window.fill();
  changes = std::make_unique<WindowChanges>(window, pane, change, computer.alerts, computer.busy);
  back = std::make_unique<WindowBack>(window, *changes, pane, change, computer.platform);
  profile = std::make_unique<WindowProfile>(window, *changes, *back, pane, change, computer.platform);
  history = std::make_unique<WindowHistory>(window, *changes, *back, computer.state, computer.platform);
  server = std::make_unique<WindowServer>(
      window, *changes, change,
      OrderedServer{pane, recording, interface, computer.services,
                    options(computer.services, records).waitForTools, computer.pause},
      computer.alerts, computer.busy);
  trial = std::make_unique<WindowTrial>(
      WindowTrial::Parts{window, *changes, *back, *server, pane, change, computer.state, computer.platform,
                         computer.alerts, computer.busy},
      computer.clock);
  reach =
      std::make_unique<WindowReach>(window, *server, pane, computer.services,
                                    [](const std::function<void()>& work, const std::function<void()>& then) {
                                      work();
                                      then();
                                    });
  window.show();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&window, kMilliseconds));
}

Panel::~Panel() = default;

Control& Panel::control(const char* outlet) {
  return *pane.outlet(outlet);
}

QWidget* Panel::widget(const char* outlet) {
  auto* found = window.findChild<QWidget*>(QString::fromUtf8(outlet));
  EXPECT_NE(found, nullptr) << outlet;
  return found;
}

void Panel::tick() {
  pane.onStateTimer();
  window.ticked();
  settle();
}

void Panel::settle() {
  for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
}

void Panel::choosePage(const std::string& group, const std::string& title) {
  auto* sidebar = as<QListWidget>("ib_oview_confBar");
  const auto& rows = pane.ib_oview_confBar.rows();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (rows[i].node->texts != std::vector<std::string>{group, title}) continue;
    const QRect row = sidebar->visualItemRect(sidebar->item(static_cast<int>(i)));
    QTest::mouseClick(sidebar->viewport(), Qt::LeftButton, {}, row.center());
  }
  settle();
}

void Panel::choosePageOf(const char* outlet) {
  for (const TabDescription& tab : interface.tabs) {
    for (const SectionDescription& section : tab.sections) {
      for (const RowDescription& row : section.rows) {
        for (const ControlDescription& one : row.controls) {
          if (one.outlet != outlet) continue;
          const std::size_t colon = tab.label.find(':');
          return choosePage(tab.label.substr(0, colon), tab.label.substr(colon + 1));
        }
      }
    }
  }
}

void Panel::click(const char* outlet) {
  QWidget* target = widget(outlet);
  QPoint at = target->rect().center();
  const bool marked =
      qobject_cast<QCheckBox*>(target) != nullptr || qobject_cast<QRadioButton*>(target) != nullptr;
  if (marked) at.setX(target->style()->pixelMetric(QStyle::PM_IndicatorWidth) / 2);
  QTest::mouseClick(target, Qt::LeftButton, {}, at);
  settle();
}

void Panel::type(const char* outlet, const QString& words) {
  auto* field = as<QLineEdit>(outlet);
  QTest::mouseClick(field, Qt::LeftButton);
  QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(field, words);
  settle();
}

void Panel::drag(const char* outlet, int value) {
  auto* slider = as<QSlider>(outlet);
  QStyleOptionSlider option;
  option.initFrom(slider);
  option.orientation = Qt::Horizontal;
  option.minimum = slider->minimum();
  option.maximum = slider->maximum();
  option.tickPosition = slider->tickPosition();
  option.tickInterval = slider->tickInterval();
  const auto handleAt = [&](int position) {
    option.sliderPosition = option.sliderValue = position;
    return slider->style()
        ->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, slider)
        .center();
  };
  QTest::mousePress(slider, Qt::LeftButton, {}, handleAt(slider->value()));
  QTest::mouseMove(slider, handleAt(value));
  QTest::mouseRelease(slider, Qt::LeftButton, {}, handleAt(value));
  settle();
}

void Panel::choose(const char* outlet, int item) {
  auto* popUp = as<QComboBox>(outlet);
  QTest::mouseClick(popUp, Qt::LeftButton);
  settle();
  if (!popUp->view()->isVisible()) return;  // a locked one does not open
  const QRect row = popUp->view()->visualRect(popUp->model()->index(item, 0));
  QTest::mouseMove(popUp->view()->viewport(), row.center());
  QTest::qWait(2 *
               QApplication::doubleClickInterval());  // sooner, it would count as the click that opened it
  QTest::mouseClick(popUp->view()->viewport(), Qt::LeftButton, {}, row.center());
  settle();
}

void Panel::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  // Without a window manager nothing activates the window again after a panel.
  if (QApplication::activeWindow() == nullptr) {
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window, kMilliseconds));
  }
  QWidget* focus = QApplication::focusWidget();
  QTest::keyClick(focus != nullptr ? focus : &window, key, modifiers);
  settle();
}

void Panel::turnWheel(QWidget* over) {
  const QPointF at(over->rect().center());
  QWheelEvent event(at, over->mapToGlobal(at), {}, QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  // As from the window system: other events are not passed on to the page.
  QSpontaneKeyEvent::setSpontaneous(&event);
  qApp->notify(over, &event);
  settle();
}

namespace {

Answers::Seen described(const QMessageBox& panel) {
  Answers::Seen seen{panel.text(),
                     panel.informativeText(),
                     {},
                     panel.windowModality() == Qt::WindowModal && panel.parentWidget() != nullptr};
  for (const QAbstractButton* button : panel.buttons())
    seen.buttons += button->text().remove(QLatin1Char('&'));
  seen.buttons.sort();
  return seen;
}

}  // namespace

Answers::Answers(std::function<void(QWidget& panel)> act) : act_(std::move(act)) {
  auto* timer = new QTimer(this);
  connect(timer, &QTimer::timeout, this, [this] { look(); });
  timer->start(5);
}

Answers::Answers(QString button)
    : Answers([words = std::move(button)](QWidget& panel) {
        for (auto* candidate : panel.findChildren<QPushButton*>()) {
          if (candidate->text().remove(QLatin1Char('&')) != words) continue;
          return QTest::mouseClick(candidate, Qt::LeftButton);
        }
        ADD_FAILURE() << "no button " << words.toStdString();
        QTest::keyClick(&panel, Qt::Key_Escape);
      }) {}

Answers::Answers(Qt::Key key) : Answers([key](QWidget& panel) { QTest::keyClick(&panel, key); }) {}

Answers::Answers(Close) : Answers([](QWidget& panel) { panel.close(); }) {}

void Answers::look() {
  auto* panel = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
  if (panel == nullptr || !panel->isVisible()) return;
  if (panel != last_) seen.push_back(described(*panel));
  last_ = panel;
  act_(*panel);  // again, in case a window that has just appeared did not take it
}

}  // namespace norvik::desktop
