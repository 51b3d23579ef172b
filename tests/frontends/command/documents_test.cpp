// The manual page and the completion script match the program: the same commands, options, exit statuses,
// settings and values.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>

#include "src/frontends/command/command_line.h"
#include "src/frontends/shared/checks/value_check.h"
#include "src/frontends/shared/reach/ladder.h"
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

// What the page says about a setting, by its name.
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
    for (const auto& setting : page["settings"]) {
      EXPECT_EQ(setting["default"], true) << "in a fresh sandbox: " << setting["name"];
      shown.insert(setting["name"].get<std::string>());
    }
  }
  Entries entries;
  const InterfaceDescription description = shippedInterface();
  for (const SettingDescription& setting : settingsOf(description)) {
    if (shown.count(setting.name) == 0) continue;
    const std::string label = setting.isChoice() ? "" : setting.first().label + ": ";
    const std::string text = box.run({"get", setting.name}).out;
    entries.emplace_back(
        setting.name, label + acceptedValues(setting) + "; default " + text.substr(0, text.size() - 1) + ".");
  }
  return entries;
}

TEST(DocumentsTest, TheManualPageHasEverySettingWithItsLabelValuesAndDefault) {
  const SandboxRun box;
  EXPECT_EQ(manualSettings(), shownSettings(box));
  EXPECT_GT(manualSettings().size(), 30U);
}

TEST(DocumentsTest, TheManualPageHasEveryCommandAndOption) {
  // Several commands may share an entry: ".It Cm start , stop , restart".
  std::multiset<std::string> commandEntries, optionEntries, expectedCommands, expectedOptions;
  for (const std::string& line : manualPage()) {
    std::istringstream words(line);
    std::string macro, kind, word;
    words >> macro >> kind;
    if (macro != ".It") continue;
    // A question has an equals sign, and is no command.
    const bool isCommand = kind == "Cm" && line.find('=') == std::string::npos;
    while (isCommand && words >> word) {
      if (word != ",") commandEntries.insert(word);
    }
    if (kind == "Fl" && words >> word) optionEntries.insert("-" + word);
  }
  for (const Command& command : commands()) expectedCommands.emplace(command.name);
  for (const Option& option : options()) expectedOptions.emplace(option.name);
  EXPECT_EQ(commandEntries, expectedCommands);
  EXPECT_EQ(optionEntries, expectedOptions);
}

TEST(DocumentsTest, TheManualPageHasEveryExitStatus) {
  const auto lines = manualPage();
  const auto section = std::find(lines.begin(), lines.end(), ".Sh EXIT STATUS");
  std::vector<std::string> entries;
  for (auto line = section; line != lines.end() && *line != ".El"; ++line) {
    if (line->starts_with(".It ")) entries.push_back(line->substr(4));
  }
  std::set<int> known{kExitNotRunning};
  for (const ExitStatusRow& row : exitStatuses()) known.insert(row.status);
  for (const RungRow& row : rungs()) known.insert(row.exitStatus);
  std::vector<std::string> expected;
  for (const int status : known) expected.push_back(std::to_string(status));
  EXPECT_EQ(entries, expected);
}

// Each entry as on the command line, and the answers in words: ".It Cm limits Ns = Ns Cm yes | no".
TEST(DocumentsTest, TheManualPageHasEveryQuestionWithItsAnswers) {
  const auto lines = manualPage();
  auto line = std::find(lines.begin(), lines.end(), ".Sh QUESTIONS");
  std::vector<std::string> entries, expected;
  for (; line != lines.end() && *line != ".Sh ENVIRONMENT"; ++line) {
    if (line->starts_with(".It ")) entries.push_back(*line);
  }
  for (const QuestionRow& question : questionTable()) {
    std::string answers;
    for (const std::string_view answer : question.answers)
      answers += (answers.empty() ? "" : " | ") + std::string(answer);
    expected.push_back(".It Cm " + std::string(question.name) + " Ns = Ns Cm " + answers);
  }
  EXPECT_EQ(entries, expected);
}

// Sources the script in bash and asks for completions as the shell would.
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
  EXPECT_EQ(complete("set nvk.enabled = ''"), "on off default\n");
  EXPECT_EQ(complete("set notify.repeat = 1"), "15-minutes 1-hour 1-day\n");
  EXPECT_EQ(complete("set connect.action = h"), "hidden\n");
  EXPECT_EQ(complete("limits ''"), "adjust reset\n");
  EXPECT_EQ(complete("show norv"), "norvik-clients\n");
  EXPECT_EQ(complete("completion ''"), "bash\n");
  EXPECT_EQ(complete("get nvk.s"), "nvk.sound\n");
  EXPECT_EQ(complete("watch ''"), "\n");
  EXPECT_EQ(complete("unset nvk.s"), "nvk.sound\n");
  EXPECT_EQ(complete("--answer r"), "reset-limits= restart=\n");
  EXPECT_EQ(complete("--answer restart ="), "later now\n");
  EXPECT_EQ(complete("--answer restart = n"), "now\n");
  // The value of an option is no command.
  EXPECT_EQ(complete("--answer limits = no set nvk.s"), "nvk.sound=\n");
  EXPECT_EQ(complete("--root " + box.folder().string() + "/var/r"), box.folder().string() + "/var/run\n");
  EXPECT_EQ(complete("status --j"), "--json\n");
}

TEST_F(CompletionTest, TheProgramTakesWhatIsProposed) {
  EXPECT_EQ(box.run({"set", "notify.show=15-minutes"}).status, 0);
  EXPECT_EQ(box.run({"get", "notify.show"}).out, "15 minutes\n");
  EXPECT_EQ(box.run({"show", "norvik-clients"}).status, 0);
}

}  // namespace
}  // namespace norvik::command
