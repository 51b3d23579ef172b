// A pane with the shipped interface on the smallest computer. For tests of the pane that no scenario can
// express.
#pragma once

#include <gtest/gtest.h>

#include "src/server/mac/pane/pane.h"
#include "tests/server/stub_computer.h"
#include "tests/support/shipped_interface.h"

namespace norvik {

struct PaneTest : testing::Test {
  StubComputer computer;
  InterfaceDescription interface = shippedInterface();
};

}  // namespace norvik
