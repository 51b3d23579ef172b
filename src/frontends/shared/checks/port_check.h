// Checks the two services' ports: what to show a person beside the field, or at the command line, before the
// pane is asked to apply. Reads the pane's controls; changes nothing.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "src/server/mac/pane/pane.h"

namespace norvik {

struct PortFinding {
  std::string sentence;  // for a person, beside the field
  bool blocks = true;    // the port cannot work; else it may, later, and this is a warning
};

// Whether some program of this computer listens on the port.
using PortInUse = std::function<bool(int64_t port)>;

// The fields that hold a port, in the order of the pages.
std::vector<const Control*> portFields(const NVKServerPrefs& pane);
// The ports that the services would have after Apply, in the order of the fields.
std::vector<int64_t> pendingPorts(const NVKServerPrefs& pane);

// What is wrong with a service's port as the controls have it now: the field's text is no number or out of
// range, or the pending port is the other service's, or another program uses it. Nothing for a field that
// holds no port, and where all is well. While the server runs, its own ports count as free.
std::optional<PortFinding> checkPort(const NVKServerPrefs& pane, const InterfaceDescription& interface,
                                     const Control& field, const PortInUse& inUse);

// The sentence beside the field: empty while nobody can edit it, and where all is well.
std::string portNote(const NVKServerPrefs& pane, const InterfaceDescription& interface, const Control& field,
                     const PortInUse& inUse);

}  // namespace norvik
