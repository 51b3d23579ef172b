// The manual page and the completion script say what the program does: the same commands, options, settings
// and values.
#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>

#include "src/frontends/shared/checks/value_check.h"
#include "tests/frontends/command/sandbox_run.h"
#include "tests/support/shipped_interface.h"

namespace norvik::command {
namespace {

std::vector<std::string> manualPage() {
  std::ifstream file(NORVIK_MANUAL_PAGE);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

// What the page says of a setting, by its name.
using Entries = std::vector<std::pair<std::string, std::string>>;

Entries manualSettings() {
  constexpr std::string_view kTag = ".It Ic ";
  const auto lines = manualPage();
  Entries entries;
  for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
    if (lines[i].starts_with(kTag)) entries.emplace_back(lines[i].substr(kTag.size()), lines[i + 1]);
  }
  return entries;
}

Entries shownSettings(const SandboxRun& box) {
  std::set<std::string> shown;
  const auto all = box.json({"show"});
  for (const auto& page : all["pages"]) {
    for (const auto& setting : page["settings"]) shown.insert(setting["name"].get<std::string>());
  }
  Entries entries;
  const InterfaceDescription description = shippedInterface();
  for (const SettingDescription& setting : settingsOf(description)) {
    if (shown.count(setting.name) == 0) continue;
    const std::string label = setting.isChoice() ? "" : setting.first().label + ": ";
    entries.emplace_back(setting.name, label + acceptedValues(setting) + ".");
  }
  return entries;
}

TEST(DocumentsTest, TheManualPageHasEverySettingWithItsLabelAndValues) {
  const SandboxRun box;
  EXPECT_EQ(manualSettings(), shownSettings(box));
  EXPECT_GT(manualSettings().size(), 30U);
}

TEST(DocumentsTest, TheManualPageHasEveryCommandAndOption) {
  const SandboxRun box;
  std::string page;
  for (const std::string& line : manualPage()) page += line + "\n";
  std::istringstream help(box.run({"--help"}).out);
  int found = 0;
  for (std::string line; std::getline(help, line);) {
    if (!line.starts_with("  ")) continue;
    std::string word = line.substr(2, line.find_first_of(" ,", 2) - 2);
    if (word == "-h") word = "--help";
    const std::string tag = word.starts_with("--") ? ".It Fl -" + word.substr(2) : word;
    const bool isThere = page.find(word.starts_with("--") ? tag : ".It Cm " + word) != std::string::npos ||
                         page.find(" , " + word) != std::string::npos;
    EXPECT_TRUE(isThere) << word;
    ++found;
  }
  EXPECT_EQ(found, 5 + 12);
}

// Sources the script in a real bash and asks for completions as the shell would.
class CompletionTest : public testing::Test {
 protected:
  void SetUp() override {
    std::ofstream(box.beside("completion.bash")) << box.run({"completion", "bash"}).out;
  }
  std::string complete(const std::string& words) const {
    std::ofstream(box.beside("ask.bash"))
        << "source \"" << box.beside("completion.bash").string() << "\"\nCOMP_WORDS=(norvikctl " << words
        << ")\nCOMP_CWORD=$((${#COMP_WORDS[@]}-1))\n_norvikctl\necho \"${COMPREPLY[*]}\"\n";
    return runProgram("/bin/bash", {box.beside("ask.bash").string()}, box.beside("")).out;
  }

  SandboxRun box;
};

TEST_F(CompletionTest, CommandsOptionsNamesAndValues) {
  EXPECT_EQ(complete("sta"), "status start\n");
  EXPECT_EQ(complete("set nvk.p"), "nvk.port.custom= nvk.port= nvk.printing=\n");
  EXPECT_EQ(complete("set nvk.enabled = ''"), "on off\n");
  EXPECT_EQ(complete("set notify.repeat = 1"), "15-minutes 1-hour 1-day\n");
  EXPECT_EQ(complete("set connect.action = h"), "hidden\n");
  EXPECT_EQ(complete("limits ''"), "adjust reset\n");
  EXPECT_EQ(complete("show norv"), "norvik-clients\n");
  EXPECT_EQ(complete("--answer a"), "alternate\n");
  EXPECT_EQ(complete("status --j"), "--json\n");
}

// A value that the script proposes is one that the program takes.
TEST_F(CompletionTest, WhatIsProposedIsTaken) {
  EXPECT_EQ(box.run({"set", "notify.show=15-minutes"}).status, 0);
  EXPECT_EQ(box.run({"get", "notify.show"}).out, "15 minutes\n");
  EXPECT_EQ(box.run({"show", "norvik-clients"}).status, 0);
}

}  // namespace
}  // namespace norvik::command
