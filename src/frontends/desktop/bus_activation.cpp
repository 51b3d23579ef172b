// The three methods of org.freedesktop.Application. The program opens no files and has no actions of its own.
#include "src/frontends/desktop/bus_activation.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMessage>
#include <QVariantMap>
#include <algorithm>
#include <iterator>

namespace norvik::desktop {

namespace {

const QString kInterface = QStringLiteral("org.freedesktop.Application");

struct Method {
  const char* name;
  const char* signature;  // ends with what the desktop says about itself
  bool showsWindow;
};
constexpr Method kMethods[] = {
    {"Activate", "a{sv}", true},
    {"Open", "asa{sv}", true},
    {"ActivateAction", "sava{sv}", false},
};

const QString kDescription = QStringLiteral(R"(<interface name="org.freedesktop.Application">
  <method name="Activate">
    <arg name="platform_data" type="a{sv}" direction="in"/>
  </method>
  <method name="Open">
    <arg name="uris" type="as" direction="in"/>
    <arg name="platform_data" type="a{sv}" direction="in"/>
  </method>
  <method name="ActivateAction">
    <arg name="action_name" type="s" direction="in"/>
    <arg name="parameter" type="av" direction="in"/>
    <arg name="platform_data" type="a{sv}" direction="in"/>
  </method>
</interface>
)");

void useToken(const QVariant& aboutDesktop) {
  const QVariantMap values = qdbus_cast<QVariantMap>(aboutDesktop);
  const QByteArray token = values.value(QStringLiteral("activation-token")).toString().toUtf8();
  if (!token.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", token);
}

}  // namespace

BusActivation::~BusActivation() {
  if (!bus_.isConnected()) return;
  bus_.unregisterService(QLatin1String(kBusName));
  bus_.unregisterObject(QLatin1String(kBusPath));
}

// The object is there before the name is, so that a program that waits for the name finds it.
bool BusActivation::take(const QDBusConnection& bus) {
  bus_ = bus;
  return bus_.isConnected() && bus_.registerVirtualObject(QLatin1String(kBusPath), this) &&
         bus_.registerService(QLatin1String(kBusName));
}

QString BusActivation::introspect(const QString& /*path*/) const {
  return kDescription;
}

bool BusActivation::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  if (!message.interface().isEmpty() && message.interface() != kInterface) return false;
  const auto* method = std::ranges::find_if(
      kMethods, [&message](const Method& row) { return message.member() == QLatin1String(row.name); });
  if (method == std::end(kMethods)) return false;
  if (message.signature() != QLatin1String(method->signature))
    return connection.send(message.createErrorReply(
        QDBusError::InvalidArgs, message.member() + QStringLiteral(" takes other arguments.")));
  if (!method->showsWindow)
    return connection.send(
        message.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("There is no such action.")));
  useToken(message.arguments().constLast());
  if (activationRequested) activationRequested();
  return !message.isReplyRequired() || connection.send(message.createReply());
}

}  // namespace norvik::desktop
