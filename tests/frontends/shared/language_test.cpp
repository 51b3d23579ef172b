// Values in sentences.
#include "src/frontends/shared/language/language.h"

#include <gtest/gtest.h>

namespace norvik {
namespace {

TEST(Language, AValueIsPutInWhereItsNumberIs) {
  EXPECT_EQ(sentence("Port {1} is taken by {2}.", {"4073", "sshd"}), "Port 4073 is taken by sshd.");
  EXPECT_EQ(sentence("{2} has {1}.", {"the port", "sshd"}), "sshd has the port.");
}

TEST(Language, AValueWithBracesStaysAsItIs) {
  EXPECT_EQ(sentence("{1} and {2}", {"{2}", "{1}"}), "{2} and {1}");
}

TEST(Language, WhatIsNoPlaceOfAValueStays) {
  EXPECT_EQ(sentence("{} {0} {3} {x} {1", {"a"}), "{} {0} {3} {x} {1");
}

TEST(Language, ANumberChoosesTheForm) {
  EXPECT_EQ(counted("{1} change", "{1} changes", 1), "1 change");
  EXPECT_EQ(counted("{1} change", "{1} changes", 0), "0 changes");
  EXPECT_EQ(counted("{1} change on {2}", "{1} changes on {2}", 3, {"Image"}), "3 changes on Image");
}

}  // namespace
}  // namespace norvik
