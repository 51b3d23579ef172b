// Questions by themselves: who answers, what no answer means, and that the table has every question of the
// pane.
#include "src/frontends/command/questions.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>
#include <sstream>

#include "src/frontends/command/decisions.h"
#include "tests/support/files.h"

namespace norvik::command {
namespace {

int ask(Questions& questions, const char* title = "Reboot is required", const char* other = nullptr) {
  return questions.NSRunAlertPanel(title, "Message\n\n", "Later", "Now", other);
}

TEST(QuestionsUnitTest, AnAnswerIsForTheQuestionOfThatNameAlone) {
  std::ostringstream out;
  Questions questions({{{"restart", 1}}, false, nullptr}, out);
  EXPECT_EQ(ask(questions), NSAlertAlternateReturn);
  EXPECT_EQ(questions.unanswered(), nullptr);
  EXPECT_EQ(ask(questions, "Multiuser Mode Adjustment"), NSAlertOtherReturn);
  ASSERT_NE(questions.unanswered(), nullptr);
  EXPECT_EQ(questions.unanswered()->title, "Multiuser Mode Adjustment");
  EXPECT_EQ(waysToAnswer(*questions.unanswered()),
            "--answer limits=yes for \"Later\" or --answer limits=no for \"Now\"");
  EXPECT_EQ(out.str(), "");
}

TEST(QuestionsUnitTest, AnAnswerThatTheQuestionHasNoButtonFor) {
  std::ostringstream out;
  Questions questions({{{"lock", 2}}, false, nullptr}, out);
  EXPECT_EQ(ask(questions, "Norvik preferences was changed", "Continue"), NSAlertOtherReturn);
  EXPECT_EQ(questions.unanswered(), nullptr);
  EXPECT_EQ(ask(questions, "Norvik preferences was changed"), NSAlertOtherReturn);
  EXPECT_NE(questions.unanswered(), nullptr);
}

TEST(QuestionsUnitTest, WithoutAnybodyNoQuestionIsAnswered) {
  std::ostringstream out;
  Questions questions(Answers(), out);
  EXPECT_EQ(ask(questions), NSAlertOtherReturn);
  EXPECT_FALSE(questions.asked().front().answer.has_value());
  EXPECT_EQ(answered(questions.asked().front()), "restart=? (Reboot is required: not answered)");
}

TEST(QuestionsUnitTest, WhatIsNotGivenHasItsDefaultAnswer) {
  std::ostringstream out;
  Questions questions({{{"restart", 1}}, true, nullptr}, out);
  EXPECT_EQ(ask(questions), NSAlertAlternateReturn);
  EXPECT_EQ(ask(questions, "Multiuser Mode Adjustment"), NSAlertDefaultReturn);
}

TEST(QuestionsUnitTest, APersonChoosesByNumberOrWord) {
  std::istringstream in("3\nyes\n2\n\nnow\n");
  std::ostringstream out;
  Questions questions({{}, false, &in}, out);
  EXPECT_EQ(ask(questions), NSAlertAlternateReturn);
  EXPECT_EQ(ask(questions), NSAlertDefaultReturn);
  EXPECT_EQ(ask(questions), NSAlertAlternateReturn);
  EXPECT_EQ(ask(questions), NSAlertOtherReturn);  // the input has ended
  EXPECT_NE(questions.unanswered(), nullptr);
  EXPECT_TRUE(out.str().starts_with(
      "\nReboot is required\n\nMessage\n\n  1  Later  (default)\n  2  Now\n\nYour choice [1]: Please "
      "type a number from 1 to 2.\n"));
}

TEST(QuestionsUnitTest, AQuestionThatTheTableDoesNotKnowCanBeAnsweredByAPersonOnly) {
  std::istringstream in("2\n");
  std::ostringstream out;
  Questions person({{}, false, &in}, out), nobody({{{"restart", 0}}, false, nullptr}, out);
  EXPECT_EQ(ask(person, "New"), NSAlertAlternateReturn);
  EXPECT_EQ(questionsJson(person.asked())[0]["name"], nullptr);
  EXPECT_EQ(ask(nobody, "New"), NSAlertOtherReturn);
  EXPECT_EQ(waysToAnswer(*nobody.unanswered()), "");
}

// The titles of the alert panels in the module's sources. A call has the title as a text, as a constant of
// the same file, or as the parameter of a function, whose calls then count.
class Titles {
 public:
  Titles() {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(NORVIK_MODULE_SOURCES)) {
      if (entry.path().extension() == ".cpp") sources_.push_back(contentOf(entry.path()));
    }
    for (const std::string& source : sources_) collect(source, "NSRunAlertPanel");
  }
  const std::multiset<std::string>& titles() const { return titles_; }
  const std::vector<std::string>& unknown() const { return unknown_; }

 private:
  void collect(const std::string& source, const std::string& function) {
    const std::regex call("\\b" + function + "\\(\\s*(?:\"([^\"]*)\"|(\\w+))");
    for (std::sregex_iterator it(source.begin(), source.end(), call), end; it != end; ++it) {
      if ((*it)[1].matched) {
        titles_.insert((*it)[1]);
      } else {
        follow(source, (*it)[2], static_cast<std::size_t>(it->position()));
      }
    }
  }
  void follow(const std::string& source, const std::string& name, std::size_t place) {
    std::smatch found;
    if (std::regex_search(source, found, std::regex(name + " = \"([^\"]*)\""))) {
      titles_.insert(found[1]);
      return;
    }
    if (name == "const") return;  // the declaration of a function that is followed
    // The last function before this place that has the parameter.
    const std::string before = source.substr(0, place);
    const std::regex definition("\\w+ (\\w+)\\(const char\\* " + name + "\\b");
    std::string function;
    for (std::sregex_iterator it(before.begin(), before.end(), definition), end; it != end; ++it)
      function = (*it)[1];
    if (function.empty()) return unknown_.push_back(name);
    collect(source, function);
  }

  std::vector<std::string> sources_;
  std::multiset<std::string> titles_;
  std::vector<std::string> unknown_;
};

TEST(QuestionTableTest, HasARowForEveryAlertPanelOfTheModule) {
  const Titles module;
  EXPECT_EQ(module.unknown(), std::vector<std::string>());
  std::multiset<std::string> rows;
  for (const QuestionRow& question : questionTable()) {
    if (!question.title.empty()) rows.emplace(question.title);
  }
  EXPECT_EQ(rows, module.titles());
  EXPECT_EQ(rows.size(), 7U);
}

TEST(QuestionTableTest, QuestionsAreFoundByNameAndTitle) {
  for (const QuestionRow& question : questionTable()) {
    EXPECT_EQ(findQuestion(question.name), &question);
    EXPECT_EQ(questionTitled(question.title), question.title.empty() ? nullptr : &question);
  }
  EXPECT_EQ(findQuestion("default"), nullptr);
  EXPECT_EQ(formOf(*findQuestion("restart")), "restart=later|now");
}

FileFinding damagedFile(const std::string& path) {
  FileFinding finding;
  finding.file = path;
  finding.damaged = true;
  return finding;
}

// The line names its values, so they are saved; that somebody else had others is said.
TEST(DecisionsTest, TheLineWinsAndItIsSaid) {
  std::ostringstream out;
  Questions questions({}, out);
  std::vector<std::string> warnings;
  Decisions decisions(questions, warnings);
  const auto sides = decisions.resolve({{"nvk.port", "Port", "Norvik clients", "4073", "5000", "6000"}});
  EXPECT_EQ(sides, std::vector<Side>{Side::mine});
  EXPECT_EQ(warnings,
            std::vector<std::string>{"Somebody else has just changed nvk.port from 4073 to 5000; it was "
                                     "made 6000 all the same."});
  EXPECT_TRUE(questions.asked().empty());
}

TEST(DecisionsTest, EachDamagedFileIsAskedAboutOnce) {
  std::ostringstream out;
  std::istringstream typed("3\n2\n");
  Questions questions({{}, false, &typed}, out);
  std::vector<std::string> warnings;
  Decisions decisions(questions, warnings);
  const FileFinding one = damagedFile("/one"), two = damagedFile("/two");
  EXPECT_EQ(decisions.decideDamaged(one), DamagedAnswer::replace);
  EXPECT_EQ(decisions.decideDamaged(two), DamagedAnswer::restore);
  EXPECT_EQ(decisions.decideDamaged(one), DamagedAnswer::replace);
  EXPECT_EQ(questions.asked().size(), 2U);
}

TEST(DecisionsTest, NobodyToAskCancels) {
  std::ostringstream out;
  Questions questions({}, out);
  std::vector<std::string> warnings;
  EXPECT_EQ(Decisions(questions, warnings).decideDamaged(damagedFile("/one")), DamagedAnswer::cancel);
}

}  // namespace
}  // namespace norvik::command
