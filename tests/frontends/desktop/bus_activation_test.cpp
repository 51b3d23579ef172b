// What desktops ask of the window on a message bus, on a bus of the test's own.
#include "src/frontends/desktop/bus_activation.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QStringList>
#include <QVariantMap>

#include "tests/support/session_bus.h"
#include "tests/support/waiting.h"

namespace norvik::desktop {
namespace {

constexpr const char* kInterface = "org.freedesktop.Application";

class BusActivationTest : public testing::Test {
 protected:
  ~BusActivationTest() override {
    for (const char* end : {"window", "desktop"}) QDBusConnection::disconnectFromBus(QLatin1String(end));
  }
  // One end of the bus each for the window and the desktop.
  QDBusConnection connected(const char* end) const {
    return QDBusConnection::connectToBus(QString::fromStdString(bus.address()), QLatin1String(end));
  }
  // The reply to a desktop's call.
  QDBusMessage call(const char* method, const QVariantList& arguments, const char* interface = kInterface) {
    QDBusMessage message = QDBusMessage::createMethodCall(QLatin1String(kBusName), QLatin1String(kBusPath),
                                                          QLatin1String(interface), QLatin1String(method));
    message.setArguments(arguments);
    const QDBusPendingCall pending = connected("desktop").asyncCall(message);
    EXPECT_TRUE(eventually([&pending] {
      QCoreApplication::processEvents();
      return pending.isFinished();
    })) << method;
    return pending.reply();
  }
  bool isRefused(const QDBusMessage& reply) const { return reply.type() == QDBusMessage::ErrorMessage; }

  const SessionBus bus;
  BusActivation activation;
};

TEST_F(BusActivationTest, ActivateAndOpenBringTheWindowToTheFront) {
  int asked = 0;
  activation.activationRequested = [&asked] { ++asked; };
  ASSERT_TRUE(activation.take(connected("window")));
  EXPECT_FALSE(isRefused(call("Activate", {QVariantMap()})));
  EXPECT_EQ(asked, 1);
  EXPECT_FALSE(isRefused(call("Open", {QStringList{QStringLiteral("file:///etc")}, QVariantMap()})));
  EXPECT_EQ(asked, 2);
}

TEST_F(BusActivationTest, TheTokenOfTheDesktopIsThereWhenTheWindowComes) {
  QByteArray token;
  activation.activationRequested = [&token] { token = qgetenv("XDG_ACTIVATION_TOKEN"); };
  ASSERT_TRUE(activation.take(connected("window")));
  call("Activate", {QVariantMap{{QStringLiteral("activation-token"), QStringLiteral("token-7")}}});
  qunsetenv("XDG_ACTIVATION_TOKEN");
  EXPECT_EQ(token, "token-7");
}

TEST_F(BusActivationTest, OtherCallsAreRefused) {
  int asked = 0;
  activation.activationRequested = [&asked] { ++asked; };
  ASSERT_TRUE(activation.take(connected("window")));
  EXPECT_TRUE(isRefused(call("ActivateAction", {QStringLiteral("restart"), QVariantList(), QVariantMap()})));
  EXPECT_TRUE(isRefused(call("Activate", {})));
  EXPECT_TRUE(isRefused(call("Activate", {QStringLiteral("now")})));
  EXPECT_TRUE(isRefused(call("Quit", {QVariantMap()})));
  EXPECT_TRUE(isRefused(call("Activate", {QVariantMap()}, "com.veltrane.norvik.Other")));
  EXPECT_EQ(asked, 0);
}

TEST_F(BusActivationTest, ItTellsWhatCanBeCalled) {
  ASSERT_TRUE(activation.take(connected("window")));
  const QDBusMessage reply = call("Introspect", {}, "org.freedesktop.DBus.Introspectable");
  ASSERT_FALSE(isRefused(reply));
  for (const char* method : {"Activate", "Open", "ActivateAction"})
    EXPECT_TRUE(reply.arguments().constFirst().toString().contains(QLatin1String(method))) << method;
}

TEST_F(BusActivationTest, ANameThatSomebodyElseHasOrNoBusIsNoHindrance) {
  ASSERT_TRUE(activation.take(connected("window")));
  BusActivation second;
  EXPECT_FALSE(second.take(connected("desktop")));
  BusActivation alone;
  EXPECT_FALSE(alone.take(QDBusConnection(QStringLiteral("none"))));
}

TEST_F(BusActivationTest, TheNameIsGivenBack) {
  {
    BusActivation first;
    ASSERT_TRUE(first.take(connected("window")));
  }
  EXPECT_TRUE(activation.take(connected("desktop")));
}

}  // namespace
}  // namespace norvik::desktop
