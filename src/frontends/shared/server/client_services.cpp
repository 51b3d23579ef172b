// A service's setting is found by its field.
#include "src/frontends/shared/server/client_services.h"

namespace norvik {

std::optional<SettingDescription> portSettingOf(const InterfaceDescription& interface,
                                                const NVKServerPrefs& pane, const ClientService& service) {
  for (SettingDescription& setting : settingsOf(interface)) {
    if (setting.first().outlet == (pane.*service.field).name()) return std::move(setting);
  }
  return std::nullopt;
}

}  // namespace norvik
