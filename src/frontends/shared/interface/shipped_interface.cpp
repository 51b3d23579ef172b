// Decodes the bytes that are built in.
#include "src/frontends/shared/interface/shipped_interface.h"

#include "resources/resources.h"
#include "src/adapters/property_lists/codec.h"
#include "src/frontends/shared/language/language.h"

namespace norvik {

std::optional<InterfaceDescription> shippedInterface(std::string& error) {
  const auto list = decodePropertyList(interfacePropertyList());
  if (list) return readInterfaceDescription(*list, error);
  error = translated("it is no property list");
  return std::nullopt;
}

}  // namespace norvik
