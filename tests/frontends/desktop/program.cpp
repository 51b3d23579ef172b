// The sandbox's life, and the mouse and keyboard through xdotool.
#include "tests/frontends/desktop/program.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QProcessEnvironment>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

#include "src/adapters/property_lists/codec.h"

namespace norvik::desktop {

namespace {

constexpr int kPatience = 10000;  // milliseconds

QString program(const char* name) {
  return QStringLiteral(NORVIK_BIN_DIR "/") + QString::fromUtf8(name);
}

PropertyList service(int port) {
  return PropertyList::Dictionary{{"PortNumber", int64_t{port}}, {"Disabled", false}};
}

}  // namespace

bool eventually(const std::function<bool()>& condition) {
  const QDeadlineTimer end(kPatience);
  while (!condition()) {
    if (end.hasExpired()) return false;
    QThread::msleep(20);
  }
  return true;
}

int freePort() {
  QTcpServer server;
  EXPECT_TRUE(server.listen(QHostAddress::LocalHost));
  return server.serverPort();
}

QByteArray greetingOn(int port) {
  QTcpSocket client;
  client.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port));
  if (!client.waitForConnected(500)) return {};
  client.waitForReadyRead(500);
  return client.readAll();
}

void Program::SetUp() {
  ASSERT_EQ(sandbox({QStringLiteral("start"), root_.path(), QStringLiteral("--speed"), QStringLiteral("50")}),
            0);
  nvkPort = freePort();
  rdpPort = freePort();
  QFile file(path(QStringLiteral("etc/norvik/svr.cfg")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(QByteArray::fromStdString(encodeXmlPropertyList(PropertyList::Dictionary{
      {"SingleUser", true}, {"NVKService", service(nvkPort)}, {"RDPService", service(rdpPort)}})));
  QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
  variables.insert(QStringLiteral("XDG_RUNTIME_DIR"), root_.path());
  panel.setProcessEnvironment(variables);
  panel.setProcessChannelMode(QProcess::ForwardedChannels);
}

void Program::TearDown() {
  if (panel.state() != QProcess::NotRunning) {
    panel.kill();
    panel.waitForFinished();
  }
  EXPECT_EQ(sandbox({QStringLiteral("stop"), root_.path()}), 0);
}

int Program::sandbox(const QStringList& words) {
  return QProcess::execute(program("norvik-sandbox"), words);
}

void Program::startServer() {
  ASSERT_EQ(orderServer(QStringLiteral("start")), 0);
}

void Program::stopServer() {
  ASSERT_EQ(orderServer(QStringLiteral("stop")), 0);
}

int Program::orderServer(const QString& order) {
  return QProcess::execute(path(QStringLiteral("usr/sbin/nvkservice")), {order, QStringLiteral("-w")});
}

int Program::run(const QStringList& words) {
  QProcess process;
  process.setProcessEnvironment(panel.processEnvironment());
  process.setProcessChannelMode(QProcess::ForwardedChannels);
  process.start(program("norvik-settings"), QStringList{QStringLiteral("--root"), root_.path()} + words);
  if (!process.waitForFinished(3 * kPatience) || process.exitStatus() != QProcess::NormalExit) return -1;
  return process.exitCode();
}

void Program::start() {
  panel.start(program("norvik-settings"), {QStringLiteral("--root"), root_.path()});
  ASSERT_TRUE(panel.waitForStarted());
  ASSERT_NE(activeWindow(QStringLiteral("Norvik Server")), QString());
}

bool Program::ends() {
  if (panel.state() != QProcess::NotRunning && !panel.waitForFinished(kPatience)) return false;
  return panel.exitStatus() == QProcess::NormalExit && panel.exitCode() == 0;
}

QString Program::x(const QStringList& words) {
  QProcess process;
  process.start(QStringLiteral("xdotool"), words);
  process.waitForFinished(kPatience);
  return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

void Program::keys(const QStringList& names) {
  x(QStringList{QStringLiteral("key"), QStringLiteral("--delay"), QStringLiteral("30")} + names);
}

QString Program::activeWindow(const QString& title) {
  QString window;
  eventually([&] {
    window = x({QStringLiteral("getactivewindow")});
    return !window.isEmpty() && x({QStringLiteral("getwindowname"), window}) == title;
  });
  return x({QStringLiteral("getwindowname"), window}) == title ? window : QString();
}

PropertyList Program::listIn(const QString& inSandbox) const {
  QFile file(path(inSandbox));
  if (!file.open(QIODevice::ReadOnly)) return {};
  return decodePropertyList(file.readAll().toStdString()).value_or(PropertyList());
}

}  // namespace norvik::desktop
