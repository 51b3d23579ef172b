// The manual page matches the program: the same commands, options, exit statuses, settings and values.
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
  std::set<int> known{kExitDiffers, kExitNotRunning, kExitTakenBack};
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

nlohmann::json profileSchema() {
  std::ifstream file(NORVIK_PROFILE_SCHEMA);
  return nlohmann::json::parse(file, nullptr, false);
}

TEST(DocumentsTest, TheSchemaOfProfilesHasEverySettingWithItsValues) {
  const InterfaceDescription description = shippedInterface();
  auto properties = profileSchema()["properties"]["settings"]["properties"];
  for (const SettingDescription& setting : settingsOf(description)) {
    nlohmann::json values = properties[setting.name];
    properties.erase(setting.name);
    EXPECT_FALSE(values["description"].get<std::string>().empty());
    values.erase("description");
    const ControlDescription& first = setting.first();
    nlohmann::json expected;
    if (first.kind == ControlKind::checkBox) {
      expected["type"] = "boolean";
    } else if (first.kind == ControlKind::popUp) {
      expected["enum"] = first.items;
    } else if (setting.isChoice()) {
      for (const ControlDescription* button : setting.controls) expected["enum"].push_back(button->choice);
      expected["enum"].push_back("none");
    } else {
      expected = {{"type", "integer"},
                  {"minimum", static_cast<int>(first.minimum.value())},
                  {"maximum", static_cast<int>(first.maximum.value())}};
    }
    EXPECT_EQ(values, expected) << setting.name;
  }
  EXPECT_EQ(properties, nlohmann::json::object());
}

TEST(DocumentsTest, TheSchemaAllowsWhatExportPrints) {
  const SandboxRun box;
  std::ofstream(box.beside("profile.json")) << box.run({"export"}).out;
  std::ofstream(box.beside("wrong.json")) << R"({"norvikProfile": 1, "settings": {"nvk.port": "5000"}})";
  const auto check = [&](const char* file) {
    return runProgram(NORVIK_CHECK_JSON, {NORVIK_PROFILE_SCHEMA, box.beside(file).string()}, box.beside(""));
  };
  EXPECT_EQ(check("profile.json").status, 0) << check("profile.json").out;
  EXPECT_EQ(check("wrong.json").status, 1);
}

// The lines of a shell in the page's examples.
Words manualExamples() {
  Words examples;
  bool isExamples = false, isLiteral = false;
  for (const std::string& line : manualPage()) {
    if (line.starts_with(".Sh ")) isExamples = line == ".Sh EXAMPLES";
    if (line == ".Ed") isLiteral = false;
    if (isExamples && isLiteral) examples.push_back(line);
    if (line.starts_with(".Bd -literal")) isLiteral = true;
  }
  return examples;
}

TEST(DocumentsTest, TheExamplesOfTheManualPageWork) {
  const SandboxRun box;
  // Where the examples write files.
  const std::string program = "cd '" + box.beside("").string() + "'; norvikctl() { '" +
                              builtProgram("norvikctl") + "' --root '" + box.folder().string() +
                              "' \"$@\"; }; set -e; ";
  const auto port = [] { return std::to_string(freePort()); };
  const Words examples = manualExamples();
  EXPECT_EQ(examples.size(), 8U);
  for (std::string line : examples) {
    // The ports of the page may be somebody else's here.
    ASSERT_EQ(box.run({"set", "nvk.port=" + port(), "rdp.port=" + port()}).status, 0);
    if (const auto place = line.find("=5000"); place != std::string::npos) line.replace(place + 1, 4, port());
    const Result result = runProgram("/bin/bash", {"-c", program + line}, box.beside(""));
    EXPECT_EQ(result.status, 0) << line << '\n' << result.err;
    EXPECT_EQ(result.out.find("does not start"), std::string::npos) << result.out << result.err;
  }
}

}  // namespace
}  // namespace norvik::command
