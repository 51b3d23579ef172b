// norvik-settings: the settings panel in a window. Options, and one instance.
#include <sysexits.h>
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

#include <cstdio>

#include "src/frontends/desktop/binding.h"
#include "src/frontends/desktop/bus_activation.h"
#include "src/frontends/desktop/display.h"
#include "src/frontends/desktop/session.h"
#include "src/frontends/desktop/single_instance.h"
#include "src/frontends/desktop/theme.h"
#include "src/frontends/desktop/toolkit_language.h"
#include "src/frontends/shared/interface/shipped_interface.h"
#include "src/frontends/shared/language/choice.h"
#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/language/translated_interface.h"

namespace norvik::desktop {
namespace {

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
int refuse(int status, const std::string& why) {
  std::fprintf(stderr, "norvik-settings: %s\n", why.c_str());
  return status;
}

Options parsed(const QApplication& application) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      translatedText(english("The settings of the Norvik remote access server.")));
  parser.addHelpOption();
  parser.addVersionOption();
  const QCommandLineOption root(
      QStringLiteral("root"), translatedText(english("Work on the sandbox in DIR.")), QStringLiteral("DIR"));
  const QCommandLineOption picture(QStringLiteral("picture"),
                                   translatedText(english("Write a picture of every page to DIR and exit.")),
                                   QStringLiteral("DIR"));
  const QCommandLineOption dark(QStringLiteral("dark"),
                                translatedText(english("Use dark colours, whatever the desktop uses.")));
  parser.addOptions({root, picture, dark});
  parser.process(application);
  if (parser.isSet(root) && parser.value(root).isEmpty())
    std::exit(refuse(EX_USAGE, sentence("{1} needs a value", {"--root"})));
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
  if (auto interface = shippedInterface(error)) return translatedInterface(std::move(*interface));
  std::exit(refuse(EX_SOFTWARE, sentence("the interface description is damaged: {1}", {error})));
}

int writePictures(Session& session, const QString& folder) {
  QString failed;
  if (session.writePictures(folder, failed)) return EX_OK;
  return refuse(EX_CANTCREAT, sentence("could not write {1}", {failed.toStdString()}));
}

int run(QApplication& application) {
  const Options options = parsed(application);
  if (!options.root.isEmpty() && !QFileInfo(options.root).isDir())
    return refuse(EX_USAGE, sentence("no such directory: \"{1}\"", {options.root.toStdString()}));
  if (!options.root.isEmpty() && !isSandbox(options.root.toStdString()))
    return refuse(EX_USAGE, sentence("\"{1}\" is not a sandbox", {options.root.toStdString()}));
  options.dark ? useDarkTheme(application) : useDesktopTheme(application);
  const auto computer = options.root.isEmpty() ? systemOptions() : sandboxOptions(options.root.toStdString());
  if (!options.pictures.isEmpty()) {
    Session session(computer, interfaceOrExit(), storedState(options));
    return writePictures(session, options.pictures);
  }
  SingleInstance instance(lockPath(options));
  const auto claim = instance.claim();
  if (claim == SingleInstance::Claim::asked) return EX_OK;
  if (claim == SingleInstance::Claim::first) {
    BusActivation activation;
    activation.activationRequested = [&instance] {
      if (instance.activationRequested) instance.activationRequested();
    };
    // The name is that of the panel of the computer itself; without it, a second start finds the first all
    // the same.
    if (options.root.isEmpty()) activation.take(QDBusConnection::sessionBus());
    return Session(computer, interfaceOrExit(), storedState(options)).run(instance);
  }
  return refuse(EX_TEMPFAIL, translated("another instance is open and does not respond"));
}

}  // namespace
}  // namespace norvik::desktop

int main(int argc, char** argv) {
  norvik::chooseLanguage(norvik::wantedLanguages());
  if (!norvik::desktop::prepareDisplay(argc, argv)) {
    return norvik::desktop::refuse(EX_UNAVAILABLE,
                                   norvik::translated("no screen to show a window on; norvikctl needs none"));
  }
  QApplication application(argc, argv);
  norvik::desktop::useChosenLanguage();
  QApplication::setOrganizationName(QStringLiteral("Norvik"));
  QApplication::setApplicationName(QStringLiteral("norvik-settings"));
  QApplication::setDesktopFileName(QLatin1String(norvik::desktop::kBusName));
  QApplication::setApplicationVersion(QStringLiteral(NORVIK_VERSION));
  return norvik::desktop::run(application);
}
