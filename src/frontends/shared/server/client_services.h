// The two services that clients connect to, and what the pane has for each: one table for all that compares,
// checks or shows their ports.
#pragma once

#include <cstdint>
#include <optional>

#include "src/frontends/shared/interface/setting_description.h"
#include "src/server/mac/pane/pane.h"
#include "src/server/mac/ui/addresses.h"

namespace norvik {

struct ClientService {
  const char* key;                   // in the names of settings and in JSON
  Control NVKServerPrefs::*field;    // of the port
  Control NVKServerPrefs::*custom;   // off: the standard port, whatever the field holds
  Control NVKServerPrefs::*address;  // the sentence that says how to connect
  int64_t (NVKServerPrefs::*pendingPort)() const;
  int64_t NVKServerPrefs::*storedPort;
  int64_t (NVKServerPrefs::*pendingState)() const;  // 1 on, 0 off
  int64_t NVKServerPrefs::*storedState;
  int64_t standardPort;  // clients use it where no port is given
};

// clang-format off
inline constexpr ClientService kClientServices[] = {
    {"nvk", &NVKServerPrefs::ib_admin_edbox_nvkPort, &NVKServerPrefs::ib_admin_chkbox_nvkPort, &NVKServerPrefs::ib_admin_label_nvkAddress,
     &NVKServerPrefs::new_admin_nvkPort, &NVKServerPrefs::m_admin_nvkPort, &NVKServerPrefs::new_admin_nvkState, &NVKServerPrefs::m_admin_nvkState, kNvkDefaultPort},
    {"rdp", &NVKServerPrefs::ib_admin_edbox_rdpPort, &NVKServerPrefs::ib_admin_chkbox_rdpPort, &NVKServerPrefs::ib_admin_label_rdpAddress,
     &NVKServerPrefs::new_admin_rdpPort, &NVKServerPrefs::m_admin_rdpPort, &NVKServerPrefs::new_admin_rdpState, &NVKServerPrefs::m_admin_rdpState, kRdpDefaultPort},
};
// clang-format on

// The setting that the field of the service's port shows; its page has the service's name. Nothing where the
// description has no such field.
std::optional<SettingDescription> portSettingOf(const InterfaceDescription& interface,
                                                const NVKServerPrefs& pane, const ClientService& service);

}  // namespace norvik
