// A pane with the shipped interface on the least of computers. For tests of the pane that no scenario can
// say.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "resources/resources.h"
#include "src/adapters/property_lists/codec.h"
#include "src/server/mac/pane/pane.h"
#include "tests/server/stub_computer.h"

namespace norvik {

inline InterfaceDescription shippedInterface() {
  std::string error;
  const auto list = decodePropertyList(interfacePropertyList());
  auto interface = list ? readInterfaceDescription(*list, error) : std::nullopt;
  EXPECT_TRUE(interface) << error;
  return interface.value_or(InterfaceDescription());
}

struct PaneTest : testing::Test {
  StubComputer computer;
  InterfaceDescription interface = shippedInterface();
};

}  // namespace norvik
