// The window's platform interfaces over Qt.
#include "src/frontends/desktop/qt_platform.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDeadlineTimer>
#include <QDesktopServices>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QGridLayout>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QUrl>
#include <QWindow>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <map>

#include "src/frontends/desktop/binding.h"
#include "src/frontends/desktop/mnemonics.h"
#include "src/frontends/shared/language/pane_texts.h"

namespace norvik::desktop {

namespace {
// Before an activation that was held back is tried again.
constexpr std::chrono::milliseconds kBusyRetry{100};
// Between two looks whether something is done.
constexpr std::chrono::milliseconds kPaintingPause{10};
}  // namespace

Busy::Busy() {
  qApp->installEventFilter(this);
}
Busy::~Busy() {
  qApp->removeEventFilter(this);
}

bool Busy::eventFilter(QObject* /*watched*/, QEvent* event) {
  static constexpr QEvent::Type kInput[] = {QEvent::KeyPress,
                                            QEvent::KeyRelease,
                                            QEvent::MouseButtonPress,
                                            QEvent::MouseButtonRelease,
                                            QEvent::MouseButtonDblClick,
                                            QEvent::Wheel,
                                            QEvent::TouchBegin,
                                            QEvent::TouchUpdate,
                                            QEvent::TouchEnd,
                                            QEvent::Shortcut,
                                            QEvent::ShortcutOverride,
                                            QEvent::ContextMenu,
                                            QEvent::TabletPress,
                                            QEvent::TabletRelease,
                                            QEvent::InputMethod,
                                            QEvent::DragEnter,
                                            QEvent::Drop};
  if (!isBusy()) return false;
  if (event->type() == QEvent::Close) {
    event->ignore();
    return true;
  }
  return std::find(std::begin(kInput), std::end(kInput), event->type()) != std::end(kInput);
}

bool waitWhilePainting(Busy& busy, const std::function<bool()>& isDone, std::chrono::milliseconds limit,
                       Input input) {
  if (isDone()) return true;
  QEventLoop loop;
  QTimer again;
  QDeadlineTimer end(limit);
  bool done = false;
  QObject::connect(&again, &QTimer::timeout, &loop, [&] {
    done = isDone();
    if (done || end.hasExpired()) loop.quit();
  });
  again.start(kPaintingPause);
  busy.enter();
  loop.exec(input == Input::kept ? QEventLoop::ExcludeUserInputEvents : QEventLoop::AllEvents);
  busy.leave();
  return done;
}

std::unique_ptr<HeldLock> PaintingLocks::lock(std::chrono::milliseconds limit) {
  std::unique_ptr<HeldLock> held;
  const auto take = [this, &held] {
    held = locks_.lock(std::chrono::milliseconds(0));
    return held != nullptr;
  };
  waitWhilePainting(busy_, take, limit, Input::dropped);
  return held;
}

std::optional<Rect> QtApplication::mainWindowFrame() {
  if (window_ == nullptr) return std::nullopt;
  const QRect frame = window_->frameGeometry();
  return Rect{double(frame.x()), double(frame.y()), double(frame.width()), double(frame.height())};
}

void QtApplication::performOnMainThread(std::function<void()> operation, bool waitUntilDone) {
  if (waitUntilDone) return operation();  // only the main thread calls this
  QTimer::singleShot(0, qApp, std::move(operation));
}

Color QtApplication::windowBackgroundColor() {
  const QColor color = QApplication::palette().color(QPalette::Window);
  return {color.redF(), color.greenF(), color.blueF(), color.alphaF()};
}

void QtApplication::observeDidBecomeActive(std::weak_ptr<ActivationObserver> observer) {
  QObject::connect(qApp, &QGuiApplication::applicationStateChanged, &life_,
                   [this, observer](Qt::ApplicationState state) {
                     if (state == Qt::ApplicationActive) notify(observer);
                   });
}

void QtApplication::notify(const std::weak_ptr<ActivationObserver>& observer) {
  if (busy_.isBusy()) {
    QTimer::singleShot(kBusyRetry, &life_, [this, observer] { notify(observer); });
  } else if (const auto held = observer.lock()) {
    held->applicationDidBecomeActive();
  }
}

namespace {

struct PanelButton {
  const char* words;
  int answer;
};

// A message box that Escape and the close button close without pressing a button.
class PanelBox : public QMessageBox {
 public:
  PanelBox(const QString& title, QWidget* window)
      : QMessageBox(QMessageBox::Question, title, title, QMessageBox::NoButton, window,
                    Qt::Sheet | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint |
                        Qt::WindowSystemMenuHint) {}

 private:
  void keyPressEvent(QKeyEvent* event) override {
    event->matches(QKeySequence::Cancel) ? reject() : QMessageBox::keyPressEvent(event);
  }
  void closeEvent(QCloseEvent* event) override {
    event->accept();
    reject();
  }
};

// Makes the panel so wide that a window manager need not shorten the title in its bar.
void widenForTitle(QMessageBox& panel) {
  constexpr int kBarButtons = 8;  // with the space around them, in lines of text
  QFont bold = panel.font();
  bold.setBold(true);
  const QFontMetrics metrics(bold);
  const int width = metrics.horizontalAdvance(panel.windowTitle()) + kBarButtons * metrics.height();
  auto* grid = static_cast<QGridLayout*>(panel.layout());
  grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount());
}

}  // namespace

int QtAlertPanels::NSRunAlertPanel(const char* title, const char* message, const char* defaultButton,
                                   const char* alternateButton, const char* otherButton) {
  const PanelButton buttons[3] = {{defaultButton, NSAlertDefaultReturn},
                                  {alternateButton, NSAlertAlternateReturn},
                                  {otherButton, NSAlertOtherReturn}};
  if (const auto answer = answered ? answered() : std::nullopt) return *answer;
  PanelBox panel(text(paneText(title)), window_);
  panel.setObjectName(QStringLiteral("alertPanel"));
  panel.setWindowModality(Qt::WindowModal);
  panel.setTextFormat(Qt::PlainText);
  panel.setInformativeText(text(paneText(message)));
  std::map<QAbstractButton*, int> answers;
  for (const PanelButton& button : buttons) {
    if (button.words == nullptr) continue;
    const auto role = &button == &buttons[0]                                  ? QMessageBox::AcceptRole
                      : &button == &buttons[1] && buttons[2].words != nullptr ? QMessageBox::DestructiveRole
                                                                              : QMessageBox::RejectRole;
    QPushButton* made = panel.addButton(withoutMnemonic(text(paneText(button.words))), role);
    answers[made] = button.answer;
    if (&button == &buttons[0]) panel.setDefaultButton(made);
  }
  QSet<QChar> taken;
  addMnemonics(panel, taken);
  widenForTitle(panel);
  panel.exec();
  const auto answer = answers.find(panel.clickedButton());
  return answer != answers.end() ? answer->second : NSAlertOtherReturn;
}

void QtWorkspace::openURL(std::string_view url) {
  QDesktopServices::openUrl(QUrl(text(url)));
}

void QtDrawing::display(Control& control) {
  if (window_ == nullptr) return;
  if (auto* widget = window_->findChild<QWidget*>(text(control.name()))) widget->repaint();
}

// Qt keeps what needs drawing for the window as a whole, and draws no more than that.
void QtDrawing::displayIfNeeded(View& view) {
  if (view.superview() == nullptr && window_ != nullptr) {
    QCoreApplication::sendPostedEvents(window_, QEvent::UpdateRequest);
  }
}

namespace {

struct Timer {
  QTimer clock;
  std::function<void()> fire;
};

Timer* timerOf(CFRunLoopTimerRef timer) {
  return reinterpret_cast<Timer*>(timer);
}

}  // namespace

// Every fire date is in the past here: the first tick comes with the first pass of the event loop.
CFRunLoopTimerRef QtRunLoop::CFRunLoopTimerCreate(double /*fireDate*/, double interval,
                                                  CFRunLoopTimerCallBack callback,
                                                  const CFRunLoopTimerContext& context) {
  auto* timer = new Timer;
  const auto reference = reinterpret_cast<CFRunLoopTimerRef>(timer);
  timer->clock.setInterval(std::chrono::milliseconds(std::llround(interval * 1000)));
  timer->fire = [this, reference, callback, info = context.info] {
    if (busy_.isBusy() || QApplication::activeModalWidget() != nullptr) return;
    callback(reference, info);
    if (ticked) ticked();
  };
  QObject::connect(&timer->clock, &QTimer::timeout, &timer->clock, timer->fire);
  return reference;
}

void QtRunLoop::CFRunLoopAddTimer(CFRunLoopTimerRef timer) {
  QTimer& clock = timerOf(timer)->clock;
  clock.start();
  QTimer::singleShot(0, &clock, timerOf(timer)->fire);
}

void QtRunLoop::CFRunLoopTimerInvalidate(CFRunLoopTimerRef timer) {
  timerOf(timer)->clock.stop();
}

void QtRunLoop::CFRelease(CFRunLoopTimerRef timer) {
  delete timerOf(timer);
}

void QtRunLoop::runOnceInDefaultMode() {
  busy_.enter();
  QCoreApplication::processEvents();
  busy_.leave();
}

void QtProcesses::usleep(uint32_t microseconds) {
  busy_.enter();
  QEventLoop loop;
  QTimer::singleShot(std::chrono::microseconds(std::llround(microseconds / speed_)).count() / 1000,
                     Qt::PreciseTimer, &loop, &QEventLoop::quit);
  loop.exec();
  busy_.leave();
}

}  // namespace norvik::desktop
