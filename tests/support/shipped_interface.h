// The interface that the pane ships with, for tests.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "resources/resources.h"
#include "src/adapters/property_lists/codec.h"
#include "src/server/mac/ui/interface_description.h"

namespace norvik {

// The test fails, and the description is empty, where the resource cannot be read.
inline InterfaceDescription shippedInterface() {
  std::string error;
  const auto list = decodePropertyList(interfacePropertyList());
  auto interface = list ? readInterfaceDescription(*list, error) : std::nullopt;
  EXPECT_TRUE(interface) << error;
  return interface.value_or(InterfaceDescription());
}

}  // namespace norvik
