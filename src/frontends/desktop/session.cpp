// Start, the parts in their order, and the ways in which a session ends.
#include "src/frontends/desktop/session.h"

#include <sysexits.h>

#include <QApplication>
#include <QEventLoop>
#include <QIcon>
#include <QSessionManager>
#include <QTimer>
#include <utility>

#include "resources/resources.h"
#include "src/frontends/desktop/pictures.h"
#include "src/frontends/shared/checks/port_in_use.h"
#include "src/frontends/shared/interface/unread_settings.h"

namespace norvik::desktop {

namespace {

constexpr std::chrono::seconds kToolPatience{30};
constexpr std::chrono::seconds kScreenPatience{1};  // a window that starts minimised is not painted
// Between two tries to end while something is under way.
constexpr std::chrono::milliseconds kEndAgain{100};

// What is remembered from one session to the next.
const QString kGeometryKey = QStringLiteral("geometry");
const QString kRowKey = QStringLiteral("row");

void useIcon() {
  const auto icon = resourceFile("icon", "png");
  if (!icon) return;
  QPixmap pixmap;
  pixmap.loadFromData(reinterpret_cast<const uchar*>(icon->data()), static_cast<uint>(icon->size()));
  QApplication::setWindowIcon(QIcon(pixmap));
}

ChangeOptions changeOptions(DesktopComputer& computer, ChangeRecords& records) {
  ChangeOptions options{records};
  options.portInUse = portInUse;
  options.waitForTools = [&computer](std::chrono::milliseconds limit) {
    return computer.waitForTools(limit);
  };
  return options;
}

}  // namespace

Session::Session(const LinuxComputerOptions& options, InterfaceDescription interface,
                 std::unique_ptr<QSettings> state)
    : computer_(options),
      history_(computer_.computer().userState, "window"),
      recording_(computer_.platform(), computer_.alerts(), computer_.drawing(), RecordingMode::real),
      interface_(withUnreadSaid(std::move(interface), computer_.services().unreadFiles)),
      pane_(interface_),
      change_(pane_, recording_, computer_.platform(), interface_, computer_.services(),
              changeOptions(computer_, history_)),
      window_(pane_, interface_, [this](const ControlDescription& field) { return portProblem(field); }),
      state_(std::move(state)),
      watch_(computer_.settingsFiles()) {
  computer_.setWindow(&window_);
}

Session::~Session() {
  computer_.setWindow(nullptr);
}

FieldNote Session::portProblem(const ControlDescription& field) {
  return portFieldNote(pane_, interface_, *pane_.outlet(field.outlet), portInUse);
}

bool Session::writePictures(const QString& folder, QString& failed) {
  wake();
  return desktop::writePictures(pane_, window_, folder, failed);
}

int Session::run(SingleInstance& instance) {
  instance.activationRequested = [this] { bringToFront(); };
  window_.closed = [this] { saveState(); };
  EndRequests requests;
  requests.requested = [this] { endWhenPossible(); };
  showEmptyWindow();
  if (!window_.isVisible()) return EX_OK;  // closed already
  fill();
  const int status = QApplication::exec();
  computer_.computer().waitForTools(kToolPatience);
  return status;
}

// The empty window appears first, so that a person sees at once that the program opens; then all the rest.
// Keys typed meanwhile wait for it.
void Session::showEmptyWindow() {
  window_.restoreGeometry(state_->value(kGeometryKey).toByteArray());
  QEventLoop shown;
  window_.painted = [&shown] { shown.quit(); };
  window_.show();
  QTimer::singleShot(kScreenPatience, &shown, &QEventLoop::quit);
  shown.exec(QEventLoop::ExcludeUserInputEvents);
  window_.painted = nullptr;
}

void Session::wake() {
  change_.look();
  pane_.awakeFromNib();
  change_.loaded();
  window_.fill();
}

void Session::fill() {
  useIcon();
  wake();
  changes_ = std::make_unique<WindowChanges>(window_, pane_, change_, computer_.alerts(), computer_.busy());
  back_ = std::make_unique<WindowBack>(window_, *changes_, pane_, change_, computer_.platform());
  profile_ =
      std::make_unique<WindowProfile>(window_, *changes_, *back_, pane_, change_, computer_.platform());
  pastChanges_ = std::make_unique<WindowHistory>(window_, *changes_, *back_, computer_.computer().userState,
                                                 computer_.platform());
  OrderedServer server{pane_,
                       recording_,
                       interface_,
                       computer_.services(),
                       [this](std::chrono::milliseconds limit) { return computer_.waitForTools(limit); },
                       [this](std::chrono::milliseconds time) { computer_.pause(time); }};
  server_ = std::make_unique<WindowServer>(window_, *changes_, change_, std::move(server), computer_.alerts(),
                                           computer_.busy());
  trial_ = std::make_unique<WindowTrial>(
      WindowTrial::Parts{window_, *changes_, *back_, *server_, pane_, change_, computer_.computer().userState,
                         computer_.platform(), computer_.alerts(), computer_.busy()},
      [] {
        return std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::steady_clock::now().time_since_epoch());
      });
  reach_ = std::make_unique<WindowReach>(window_, *server_, pane_, computer_.services(),
                                         [this](std::function<void()> work, std::function<void()> then) {
                                           background_.run(std::move(work), std::move(then));
                                         });
  computer_.runLoop().ticked = [this] { window_.ticked(); };
  watchFiles();
  QObject::connect(qApp, &QGuiApplication::commitDataRequest, &window_,
                   [this](QSessionManager& manager) { askBeforeSessionEnds(manager); });
  restorePage();
  pane_.willSelect();
  pane_.didSelect();
  QTimer::singleShot(0, &window_, [this] { trial_->takeBackAbandoned(); });
}

void Session::watchFiles() {
  if (watch_.descriptor() == -1) return;
  watched_ = std::make_unique<QSocketNotifier>(watch_.descriptor(), QSocketNotifier::Read);
  QObject::connect(watched_.get(), &QSocketNotifier::activated, &window_, [this] {
    if (watch_.takeChanges()) changes_->filesChanged();
  });
}

void Session::restorePage() {
  const int row = state_->value(kRowKey, -1).toInt();
  if (row >= 0) window_.restorePage(row);
}

void Session::saveState() {
  state_->setValue(kGeometryKey, window_.saveGeometry());
  state_->setValue(kRowKey, window_.pageToRestore());
}

void Session::bringToFront() {
  window_.setWindowState(window_.windowState() & ~Qt::WindowMinimized);
  window_.raise();
  window_.activateWindow();
}

// The program was asked to end by a signal: nobody may be there to ask. What is under way is finished first.
void Session::endWhenPossible() {
  QWidget* asking = QApplication::activeModalWidget();
  if (asking != nullptr && !computer_.busy().isBusy()) asking->close();
  if (asking == nullptr && !computer_.busy().isBusy() && !window_.isLeaving()) {
    if (trial_ && trial_->isUnderWay()) trial_->revert();
    window_.closeWithoutAsking();
  } else {
    QTimer::singleShot(kEndAgain, &window_, [this] { endWhenPossible(); });
  }
}

// The person logs out, or the computer is switched off by a person who is there.
void Session::askBeforeSessionEnds(QSessionManager& manager) {
  if (!manager.allowsInteraction()) return;
  if (!window_.mayLeave()) manager.cancel();
  manager.release();
}

}  // namespace norvik::desktop
