// Which lines are allowed: every row of the table, and nothing that differs from one in a single place.
#include "src/helper/allowed_lines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <functional>

#include "src/server/mac/text/escape.h"
#include "tests/helper/lines.h"

namespace norvik::helper {
namespace {

bool isAllowed(const SpelledLine& line) {
  return !line.empty() && allowedLine(line[0], Words(line.begin() + 1, line.end())).has_value();
}

std::string shown(const SpelledLine& line) {
  std::string text;
  for (const std::string& word : line) text += norvik::quoted(word) + " ";
  return text;
}

// The word with the number of another process in its place; the word itself where there is none.
std::string withProcess812(const std::string& word) {
  const std::size_t dot = word.rfind('.');
  const std::string number = dot == std::string::npos ? "" : word.substr(dot + 1);
  const bool isNumber = !number.empty() && number[0] != '0' && number.size() < 10 &&
                        std::all_of(number.begin(), number.end(),
                                    [](unsigned char c) { return c < 128 && std::isdigit(c) != 0; });
  return isNumber ? word.substr(0, dot) + ".812" : word;
}

// What must be allowed, without looking at the table: a spelled line, for whatever process.
bool mustBeAllowed(SpelledLine line) {
  if (line.size() == 4 && line[0] == "/bin/mv") line[2] = withProcess812(line[2]);
  return std::find(spelledLines().begin(), spelledLines().end(), line) != spelledLines().end();
}

// Calls `visit` with every line that differs from the given one in one place.
class Mutations {
 public:
  explicit Mutations(std::function<void(const SpelledLine&)> visit) : visit_(std::move(visit)) {}

  void of(const SpelledLine& line) {
    for (std::size_t i = 0; i < line.size(); ++i) {
      dropAndAdd(line, i);
      changeAndSwap(line, i);
      alterBytes(line, i);
    }
    for (const std::string& word : otherWords()) visit_(with(line, line.size(), word));
  }

 private:
  static const std::vector<std::string>& otherWords() {
    static const std::vector<std::string> words = [] {
      std::vector<std::string> all{"",
                                   "-f",
                                   "--",
                                   "-",
                                   "/",
                                   "..",
                                   "/etc/shadow",
                                   "4755",
                                   "777",
                                   "*",
                                   "$(id)",
                                   ";",
                                   "\n",
                                   "VARIABLE",
                                   "1",
                                   "01",
                                   "+0",
                                   " 0",
                                   "0 ",
                                   "00",
                                   "/tmp/norvik.prefs.tmp.server.conf.0",
                                   "/tmp/norvik.prefs.tmp.server.conf.-1",
                                   "/tmp/norvik.prefs.tmp.server.conf.0812",
                                   "/tmp/norvik.prefs.tmp.server.conf.2147483648",
                                   "/tmp/norvik.prefs.tmp.server.conf.812/../../etc/shadow",
                                   "/tmp/../tmp/norvik.prefs.tmp.server.conf.812",
                                   "//tmp/norvik.prefs.tmp.server.conf.812",
                                   "/tmp/norvik.prefs.tmp..812"};
      for (const SpelledLine& line : spelledLines()) all.insert(all.end(), line.begin(), line.end());
      return all;
    }();
    return words;
  }
  static SpelledLine with(SpelledLine line, std::size_t place, const std::string& word) {
    line.insert(line.begin() + static_cast<std::ptrdiff_t>(place), word);
    return line;
  }
  void dropAndAdd(const SpelledLine& line, std::size_t i) {
    SpelledLine shorter = line;
    shorter.erase(shorter.begin() + static_cast<std::ptrdiff_t>(i));
    visit_(shorter);
    for (const std::string& word : otherWords()) visit_(with(line, i, word));
  }
  void changeAndSwap(const SpelledLine& line, std::size_t i) {
    for (const std::string& word : otherWords()) {
      SpelledLine changed = line;
      changed[i] = word;
      visit_(changed);
    }
    for (std::size_t j = i + 1; j < line.size(); ++j) {
      SpelledLine swapped = line;
      std::swap(swapped[i], swapped[j]);
      visit_(swapped);
    }
  }
  void alterBytes(const SpelledLine& line, std::size_t i) {
    for (std::size_t at = 0; at <= line[i].size(); ++at) {
      for (int byte = 0; byte < 256; ++byte) {
        SpelledLine altered = line;
        altered[i].insert(at, 1, static_cast<char>(byte));
        visit_(altered);
        altered = line;
        if (at == line[i].size()) continue;
        altered[i][at] = static_cast<char>(byte);
        visit_(altered);
      }
      SpelledLine cut = line;
      cut[i].erase(at);
      visit_(cut);
    }
  }

  std::function<void(const SpelledLine&)> visit_;
};

TEST(AllowedLines, EveryRowIsAllowed) {
  for (const SpelledLine& line : spelledLines()) EXPECT_TRUE(isAllowed(line)) << shown(line);
  std::vector<const ToolCommand*> rows;
  for (const SpelledLine& line : spelledLines())
    rows.push_back(&allowedLine(line[0], Words(line.begin() + 1, line.end()))->row->command);
  for (const ToolCommand* command : kToolCommands)
    EXPECT_NE(std::find(rows.begin(), rows.end(), command), rows.end()) << command->tool;
}

TEST(AllowedLines, NothingThatDiffersInOnePlaceIsAllowed) {
  std::size_t count = 0;
  std::size_t allowed = 0;
  std::size_t wrong = 0;
  Mutations mutations([&](const SpelledLine& line) {
    ++count;
    const bool expected = mustBeAllowed(line);
    allowed += expected ? 1 : 0;
    if (isAllowed(line) == expected) return;
    if (++wrong < 10) ADD_FAILURE() << shown(line) << (expected ? "is refused" : "is allowed");
  });
  for (const SpelledLine& line : spelledLines()) mutations.of(line);
  EXPECT_EQ(wrong, 0U);
  EXPECT_GT(count, 100'000U);
  EXPECT_GT(allowed, 0U);  // other processes' numbers, and bytes replaced by themselves
}

TEST(AllowedLines, TheTwoFreePlacesOfARowHoldTheSame) {
  const SpelledLine line = {"/usr/bin/defaults",
                            "write",
                            "/Library/Preferences/com.apple.windowserver",
                            "GLCompositor",
                            "-dict",
                            "tileHeight",
                            "-int",
                            "0",
                            "tileWidth",
                            "-int",
                            "256"};
  EXPECT_FALSE(isAllowed(line));
}

TEST(AllowedLines, TemporaryPathsAreThoseOfAProcess) {
  EXPECT_TRUE(isTemporaryPath("/tmp/norvik.prefs.tmp.server.conf.1", "server.conf"));
  EXPECT_TRUE(isTemporaryPath("/tmp/norvik.prefs.tmp.server.conf.2147483647", "server.conf"));
  for (const char* number :
       {"", "0", "-1", "+1", "01", " 1", "1 ", "1x", "2147483648", "99999999999999999999"})
    EXPECT_FALSE(isTemporaryPath("/tmp/norvik.prefs.tmp.server.conf." + std::string(number), "server.conf"))
        << number;
  EXPECT_FALSE(isTemporaryPath("/tmp/norvik.prefs.tmp.launchd.conf.1", "server.conf"));
  EXPECT_FALSE(isTemporaryPath("", "server.conf"));
}

}  // namespace
}  // namespace norvik::helper
