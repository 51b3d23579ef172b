// Property lists in a program whose locale writes numbers with a comma, as the host of the pane may have
// chosen.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "src/adapters/property_lists/codec.h"
#include "src/server/mac/text/reals.h"
#include "tests/support/files.h"
#include "tests/support/program.h"
#include "tests/support/temporary_folder.h"

namespace norvik {
namespace {

// A system need not have such a locale, so the test makes one.
class LocaleTest : public testing::Test {
 protected:
  void SetUp() override {
    const std::filesystem::path source = folder_.path() / "comma";
    writeFile(source,
              "comment_char %\nescape_char /\nLC_NUMERIC\ndecimal_point \"<U002C>\"\n"
              "thousands_sep \"<U002E>\"\ngrouping 3;3\nEND LC_NUMERIC\n");
    const std::filesystem::path made = folder_.path() / "comma_TEST";
    runProgram({"/usr/bin/localedef", "-c", "-i", source, "-f", "ANSI_X3.4-1968", made});
    setenv("LOCPATH", folder_.path().c_str(), 1);
    ASSERT_NE(std::setlocale(LC_NUMERIC, "comma_TEST"), nullptr);
  }
  void TearDown() override {
    std::setlocale(LC_NUMERIC, "C");
    unsetenv("LOCPATH");
  }

 private:
  TemporaryFolder folder_;
};

TEST_F(LocaleTest, RealsHaveAPointWhereTheLocaleHasAComma) {
  char byLocale[8];
  std::snprintf(byLocale, sizeof byLocale, "%.1f", 1.5);
  ASSERT_STREQ(byLocale, "1,5");

  EXPECT_EQ(realText(1234567.5, RealForm::shorter), "1234567.5");
  EXPECT_EQ(leadingReal("1.5")->value, 1.5);
  EXPECT_EQ(leadingReal("1,5")->length, 1U);
  const std::string text = encodeXmlPropertyList(PropertyList(0.5));
  EXPECT_NE(text.find("<real>0.5</real>"), std::string::npos) << text;
  EXPECT_EQ(decodePropertyList(text), PropertyList(0.5));
}

}  // namespace
}  // namespace norvik
