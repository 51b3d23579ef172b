// norvik-settings: the settings panel in a window. Options, one instance, the size and page of the last
// session.
#include <sysexits.h>
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QIcon>
#include <QSettings>
#include <QStandardPaths>
#include <QTimer>

#include <cstdio>

#include "resources/resources.h"
#include "src/frontends/desktop/desktop_computer.h"
#include "src/frontends/desktop/display.h"
#include "src/frontends/desktop/pictures.h"
#include "src/frontends/desktop/settings_window.h"
#include "src/frontends/desktop/single_instance.h"
#include "src/frontends/desktop/theme.h"
#include "src/frontends/shared/checks/port_in_use.h"
#include "src/frontends/shared/interface/shipped_interface.h"

namespace norvik::desktop {
namespace {

constexpr std::chrono::seconds kToolPatience{30};
constexpr std::chrono::seconds kScreenPatience{1};  // a window that starts minimised is not painted

// What is remembered from one session to the next.
const QString kGeometryKey = QStringLiteral("geometry");
const QString kRowKey = QStringLiteral("row");

struct Options {
  QString root;
  QString pictures;
  bool dark = false;
};

// The path of a folder without symbolic links, so that a second start finds the first one whatever path it
// is given. The path itself if there is no such folder.
QString onePath(const QString& folder) {
  const QString canonical = folder.isEmpty() ? QString() : QDir(folder).canonicalPath();
  return canonical.isEmpty() ? folder : canonical;
}

// Prints why there will be no window. Returns the given status, to exit with.
int refuse(int status, const QString& why) {
  std::fprintf(stderr, "norvik-settings: %s\n", qPrintable(why));
  return status;
}

Options parsed(const QApplication& application) {
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("The settings of the Norvik remote access server."));
  parser.addHelpOption();
  parser.addVersionOption();
  const QCommandLineOption root(QStringLiteral("root"), QStringLiteral("Work on the sandbox in DIR."),
                                QStringLiteral("DIR"));
  const QCommandLineOption picture(QStringLiteral("picture"),
                                   QStringLiteral("Write a picture of every page to DIR and exit."),
                                   QStringLiteral("DIR"));
  const QCommandLineOption dark(QStringLiteral("dark"),
                                QStringLiteral("Use dark colours, whatever the desktop uses."));
  parser.addOptions({root, picture, dark});
  parser.process(application);
  if (parser.isSet(root) && parser.value(root).isEmpty())
    std::exit(refuse(EX_USAGE, QStringLiteral("--root needs a value")));
  return {onePath(parser.value(root)), parser.value(picture), parser.isSet(dark)};
}

// A path for each user and root, so that their panels do not block one another.
QString lockPath(const Options& options) {
  if (!options.root.isEmpty()) return options.root + QStringLiteral("/.norvik/settings.lock");
  return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) +
         QStringLiteral("/norvik-settings.lock");
}

// For a sandbox it is stored in the sandbox.
std::unique_ptr<QSettings> storedState(const Options& options) {
  if (options.root.isEmpty()) return std::make_unique<QSettings>();
  return std::make_unique<QSettings>(options.root + QStringLiteral("/.norvik/desktop.ini"),
                                     QSettings::IniFormat);
}

InterfaceDescription interfaceOrExit() {
  std::string error;
  if (auto interface = shippedInterface(error)) return *interface;
  std::exit(refuse(EX_SOFTWARE, QStringLiteral("the interface description is damaged: %1").arg(text(error))));
}

void useIcon() {
  const auto icon = resourceFile("icon", "png");
  if (!icon) return;
  QPixmap pixmap;
  pixmap.loadFromData(reinterpret_cast<const uchar*>(icon->data()), static_cast<uint>(icon->size()));
  QApplication::setWindowIcon(QIcon(pixmap));
}

// The pane in its window on the computer that the options name.
class Session {
 public:
  explicit Session(const Options& options);
  ~Session() { computer_.setWindow(nullptr); }

  // 0, or a status of sysexits.h.
  int writePictures(const QString& folder);
  // Returns when the window is closed and the tools it started have ended.
  int run(SingleInstance& instance);

 private:
  void showEmptyWindow();
  void fill();
  void restorePage();
  void saveState();
  void bringToFront();
  FieldNote portProblem(const ControlDescription& field);

  DesktopComputer computer_;
  const InterfaceDescription interface_ = interfaceOrExit();
  NVKServerPrefs pane_{interface_};
  SettingsWindow window_;
  const std::unique_ptr<QSettings> state_;
};

Session::Session(const Options& options)
    : computer_(options.root.isEmpty() ? systemOptions() : sandboxOptions(options.root.toStdString())),
      window_(pane_, interface_, [this](const ControlDescription& field) { return portProblem(field); }),
      state_(storedState(options)) {
  computer_.setWindow(&window_);
}

FieldNote Session::portProblem(const ControlDescription& field) {
  return portFieldNote(pane_, interface_, *pane_.outlet(field.outlet), portInUse);
}

int Session::writePictures(const QString& folder) {
  pane_.awakeFromNib();
  window_.fill();
  QString failed;
  if (desktop::writePictures(pane_, window_, folder, failed)) return EX_OK;
  return refuse(EX_CANTCREAT, QStringLiteral("could not write %1").arg(failed));
}

int Session::run(SingleInstance& instance) {
  instance.activationRequested = [this] { bringToFront(); };
  window_.closed = [this] { saveState(); };
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

void Session::fill() {
  useIcon();
  pane_.awakeFromNib();
  window_.fill();
  computer_.runLoop().ticked = [this] { window_.ticked(); };
  restorePage();
  pane_.willSelect();
  pane_.didSelect();
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

int run(QApplication& application) {
  const Options options = parsed(application);
  if (!options.root.isEmpty() && !QFileInfo(options.root).isDir())
    return refuse(EX_USAGE, QStringLiteral("no such directory: \"%1\"").arg(options.root));
  if (!options.root.isEmpty() && !isSandbox(options.root.toStdString()))
    return refuse(EX_USAGE, QStringLiteral("\"%1\" is not a sandbox").arg(options.root));
  options.dark ? useDarkTheme(application) : useDesktopTheme(application);
  if (!options.pictures.isEmpty()) return Session(options).writePictures(options.pictures);
  SingleInstance instance(lockPath(options));
  const auto claim = instance.claim();
  if (claim == SingleInstance::Claim::asked) return EX_OK;
  if (claim == SingleInstance::Claim::first) return Session(options).run(instance);
  return refuse(EX_TEMPFAIL, QStringLiteral("another instance is open and does not respond"));
}

}  // namespace
}  // namespace norvik::desktop

int main(int argc, char** argv) {
  if (!norvik::desktop::prepareDisplay(argc, argv)) {
    return norvik::desktop::refuse(EX_UNAVAILABLE,
                                   QStringLiteral("no screen to show a window on; norvikctl needs none"));
  }
  QApplication application(argc, argv);
  QApplication::setOrganizationName(QStringLiteral("Norvik"));
  QApplication::setApplicationName(QStringLiteral("norvik-settings"));
  QApplication::setApplicationVersion(QStringLiteral(NORVIK_VERSION));
  return norvik::desktop::run(application);
}
