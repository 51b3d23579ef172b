// What the helper writes to the system log: one line, however long or strange the words are.
#include "src/helper/journal.h"

#include <gtest/gtest.h>

#include "tests/support/captured_syslog.h"

namespace norvik::helper {
namespace {

const std::string kLong(100'000, 'x');

TEST(Journal, WordsAreCutAndCounted) {
  EXPECT_LT(textOf(kLong, {}).size(), 1000U);
  EXPECT_LT(textOf("tool", {kLong, kLong}).size(), 1000U);
  EXPECT_TRUE(textOf("tool", Words(kMaxArguments, "a")).ends_with("\"a\""));
  const std::string cut = textOf("tool", Words(kMaxArguments + 1, "a"));
  EXPECT_TRUE(cut.ends_with("\"a\" ...")) << cut;
}

TEST(Journal, NobodyWritesALineOfTheirOwn) {
  EXPECT_EQ(textOf("a\nb", {"\"", "\x1b[31m"}), "\"a\\nb\" \"\\\"\" \"\\x1b[31m\"");
  EXPECT_EQ(nameOf(1000, ":1.5"), "uid 1000 (:1.5)");
  EXPECT_EQ(nameOf(0, ""), "uid 0 (directly)");
  EXPECT_EQ(nameOf(std::nullopt, ":1.5"), "uid unknown (:1.5)");
}

TEST(Journal, AResultIsCutAndEscaped) {
  capturedSyslog().clear();
  writeJournal("who", "line", "failed: " + kLong);
  writeJournal("who", "line", "failed: a\nb");
  ASSERT_EQ(capturedSyslog().size(), 2U);
  EXPECT_LT(capturedSyslog()[0].size(), 1000U);
  EXPECT_TRUE(capturedSyslog()[1].ends_with("who: line: failed: a\\nb")) << capturedSyslog()[1];
}

}  // namespace
}  // namespace norvik::helper
