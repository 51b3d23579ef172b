// What no command can deal with itself ends with a sentence and a status.
#include "src/frontends/command/guarded.h"

#include <gtest/gtest.h>

#include <new>
#include <sstream>
#include <stdexcept>

namespace norvik::command {
namespace {

struct Printed {
  ExitStatus status;
  std::string out, err;
};

Printed runGuarded(bool json, const std::function<ExitStatus()>& run) {
  std::ostringstream out, err;
  const ExitStatus status = guarded({out, err, json, "set"}, run);
  return {status, out.str(), err.str()};
}

TEST(GuardedTest, ACommandThatEndsKeepsItsStatus) {
  const Printed printed = runGuarded(false, [] { return kExitDamaged; });
  EXPECT_EQ(printed.status, kExitDamaged);
  EXPECT_EQ(printed.out + printed.err, "");
}

TEST(GuardedTest, TooLittleMemory) {
  const auto run = []() -> ExitStatus { throw std::bad_alloc(); };
  const Printed printed = runGuarded(false, run);
  EXPECT_EQ(printed.status, 70);
  EXPECT_EQ(printed.err, "norvikctl: there is too little memory.\n");
  const auto object = nlohmann::json::parse(runGuarded(true, run).out);
  EXPECT_EQ(object["ok"], false);
  EXPECT_EQ(object["command"], "set");
  EXPECT_EQ(object["error"]["status"], 70);
  EXPECT_EQ(object["error"]["code"], "software");
}

TEST(GuardedTest, AFaultOfTheProgram) {
  const Printed printed = runGuarded(false, []() -> ExitStatus { throw std::out_of_range("at"); });
  EXPECT_EQ(printed.status, 70);
  EXPECT_EQ(printed.err, "norvikctl: a fault of the program: at\n");
}

}  // namespace
}  // namespace norvik::command
