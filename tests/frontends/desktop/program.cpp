// The program by a process of the toolkit, and the mouse and keyboard through
// xdotool.
#include "tests/frontends/desktop/program.h"

#include <QProcessEnvironment>

#include "tests/support/tcp_port.h"

namespace norvik::desktop {

namespace {

constexpr int kMilliseconds = static_cast<int>(kPatience.count());

QStringList withRoot(const std::filesystem::path& root, const QStringList& words) {
  return QStringList{QStringLiteral("--root"), QString::fromStdString(root)} + words;
}

QString settingsProgram() {
  return QString::fromStdString(builtProgram("norvik-settings"));
}

}  // namespace

QByteArray greetingOn(int port) {
  return QByteArray::fromStdString(norvik::greetingOn(port));
}

void Program::SetUp() {
  nvkPort = freePort();
  rdpPort = freePort();
  box_.setPorts(nvkPort, rdpPort);
  QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
  variables.insert(QStringLiteral("XDG_RUNTIME_DIR"), QString::fromStdString(box_.beside("")));
  panel.setProcessEnvironment(variables);
  panel.setProcessChannelMode(QProcess::ForwardedChannels);
}

void Program::TearDown() {
  if (panel.state() == QProcess::NotRunning) return;
  panel.kill();
  panel.waitForFinished(kMilliseconds);
}

void Program::startServer() {
  orderServer("start");
}

void Program::stopServer() {
  orderServer("stop");
}

void Program::orderServer(const std::string& order) {
  const ProgramResult result = box_.tool("/usr/sbin/nvkservice", {order, "-w"});
  ASSERT_EQ(result.status, 0) << result.output;
}

int Program::run(const QStringList& words) {
  QProcess process;
  process.setProcessEnvironment(panel.processEnvironment());
  process.setProcessChannelMode(QProcess::ForwardedChannels);
  process.start(settingsProgram(), withRoot(box_.root(), words));
  constexpr int kLimit = static_cast<int>(kProgramLimit.count());
  if (!process.waitForFinished(kLimit) || process.exitStatus() != QProcess::NormalExit) return -1;
  return process.exitCode();
}

void Program::start() {
  panel.start(settingsProgram(), withRoot(box_.root(), {}));
  ASSERT_TRUE(panel.waitForStarted());
  ASSERT_NE(activeWindow(QStringLiteral("Norvik Server")), QString());
}

bool Program::ends() {
  if (panel.state() != QProcess::NotRunning && !panel.waitForFinished(kMilliseconds)) return false;
  return panel.exitStatus() == QProcess::NormalExit && panel.exitCode() == 0;
}

QString Program::x(const QStringList& words) {
  Words all{"xdotool"};
  for (const QString& word : words) all.push_back(word.toStdString());
  return QString::fromStdString(runProgram(all).output).trimmed();
}

void Program::keys(const QStringList& names) {
  x(QStringList{QStringLiteral("key"), QStringLiteral("--delay"), QStringLiteral("30")} + names);
}

// What the window manager calls active is not enough: the window of a program
// that was started again often has the number of the window before, which the
// window manager may not have noticed to be gone. Only the X server knows where
// a key goes.
QString Program::activeWindow(const QString& title) {
  QString window;
  const bool isThere = eventually([&] {
    window = x({QStringLiteral("getactivewindow")});
    if (window.isEmpty() || x({QStringLiteral("getwindowname"), window}) != title) return false;
    return x({QStringLiteral("getwindowfocus")}) == window;
  });
  return isThere ? window : QString();
}

PropertyList Program::listIn(const QString& inSandbox) const {
  return box_.list("/" + inSandbox.toStdString());
}

QString Program::path(const QString& inSandbox) const {
  return QString::fromStdString(box_.root() / inSandbox.toStdString());
}

}  // namespace norvik::desktop
