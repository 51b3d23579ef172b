// The lines that the pane logs.
#include "src/server/mac/platform/log.h"

#include <gtest/gtest.h>

#include "tests/server/stub_computer.h"

namespace norvik {
namespace {

TEST(LogTest, LogsTheFormatWithItsOneTextOrNone) {
  StubComputer computer;
  logFailure("Norvik[E]: Could not write file: %s", "/etc/%s");
  logFailure("Norvik[E]: Limits could not be saved.");
  EXPECT_EQ(computer.system.lines, (std::vector<std::string>{"3 Norvik[E]: Could not write file: /etc/%s",
                                                             "3 Norvik[E]: Limits could not be saved."}));
}

}  // namespace
}  // namespace norvik
