// Lines as lists of pieces, and files as lists of lines where no scenario can make the file.
#include "src/server/mac/stores/line_file.h"

#include "tests/server/pane_fixture.h"

namespace norvik {
namespace {

TEST(LineFileTest, PiecesAreWhatIsBetweenWhiteSpace) {
  using Pieces = std::vector<std::string_view>;
  EXPECT_EQ(piecesOf("limit maxfiles\t12288  10240"), (Pieces{"limit", "maxfiles", "12288", "10240"}));
  EXPECT_EQ(piecesOf("  limit\xe3\x80\x80maxfiles "), (Pieces{"limit", "maxfiles"}));
  EXPECT_EQ(piecesOf("limit\rmaxfiles"), (Pieces{"limit\rmaxfiles"}));  // a line end is no white space within
  EXPECT_EQ(piecesOf("a\xff b"), (Pieces{"a\xff", "b"}));
  EXPECT_TRUE(piecesOf("").empty());
  EXPECT_TRUE(piecesOf(" \t ").empty());
}

constexpr const char* kOnlyFile = "/var/run/nvkserverd.pid";  // of the smallest computer

TEST_F(PaneTest, AFileOfMoreBytesThanItReportsIsReadToItsReportedSize) {
  NVKServerPrefs pane(interface);
  computer.files.pidFile = "one\ntwo\n";
  EXPECT_EQ(pane.loadStringsArray(kOnlyFile), (StringsArray{"one", "two"}));
  computer.files.reportedSize = 3;
  EXPECT_EQ(pane.loadStringsArray(kOnlyFile), StringsArray{"one"});
}

TEST_F(PaneTest, AFileTooLargeForMemoryIsUnreadable) {
  NVKServerPrefs pane(interface);
  computer.files.pidFile = "limit maxfiles 1 2\n";
  for (const int64_t size : {int64_t{1} << 62, int64_t{15} << 40, (int64_t{64} << 20) + 1}) {
    computer.files.reportedSize = size;
    EXPECT_EQ(pane.loadStringsArray(kOnlyFile), std::nullopt) << size;
  }
}

}  // namespace
}  // namespace norvik
