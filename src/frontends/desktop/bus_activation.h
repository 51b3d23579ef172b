// The window on the person's message bus, as its desktop entry promises: desktops start it, and bring it to
// the front, by the interface org.freedesktop.Application. A panel works as well where there is no bus.
#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <functional>

namespace norvik::desktop {

// The name on the bus. The desktop entry and the file that lets the bus start the program are called like it.
inline constexpr const char* kBusName = "com.veltrane.norvik.settings";
inline constexpr const char* kBusPath = "/com/veltrane/norvik/settings";

class BusActivation : public QDBusVirtualObject {
 public:
  BusActivation() = default;
  // Gives the name back.
  ~BusActivation() override;

  // Takes the name on this bus, and answers on it from now on. False where there is no bus, and where
  // somebody else has the name. To be called once.
  bool take(const QDBusConnection& bus);

  // Called each time that a desktop asks for the window. The token by which the desktop lets it come to the
  // front is in the environment then, where the toolkit looks for it.
  std::function<void()> activationRequested;

  QString introspect(const QString& path) const override;
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  QDBusConnection bus_{QString()};  // none yet
};

}  // namespace norvik::desktop
