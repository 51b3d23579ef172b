// From bytes to a description.
#include "hosts/checks/shipped_interface.h"

#include "platform/property_lists/codec.h"
#include "resources/resources.h"

namespace norvik {

std::optional<InterfaceDescription> shippedInterface(std::string& error) {
  const auto list = decodePropertyList(interfacePropertyList());
  if (list) return readInterfaceDescription(*list, error);
  error = "it is no property list";
  return std::nullopt;
}

}  // namespace norvik
