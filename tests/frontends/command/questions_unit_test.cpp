// Questions by themselves: who answers, and what no answer means.
#include "src/frontends/command/questions.h"

#include <gtest/gtest.h>

#include <sstream>

namespace norvik::command {
namespace {

int ask(Questions& questions, const char* other = nullptr) {
  return questions.NSRunAlertPanel("Title", "Message\n\n", "Yes", "No", other);
}

TEST(QuestionsUnitTest, AFixedAnswerIsGivenWhereThereIsSuchAButton) {
  std::ostringstream out;
  Questions questions({NSAlertOtherReturn, nullptr}, out);
  EXPECT_EQ(ask(questions, "Later"), NSAlertOtherReturn);
  EXPECT_EQ(questions.unanswered(), nullptr);
  EXPECT_EQ(ask(questions), NSAlertOtherReturn);
  ASSERT_NE(questions.unanswered(), nullptr);
  EXPECT_EQ(questions.unanswered()->buttons.size(), 2U);
  EXPECT_EQ(out.str(), "");
}

TEST(QuestionsUnitTest, WithoutAnybodyNoQuestionIsAnswered) {
  std::ostringstream out;
  Questions questions({}, out);
  EXPECT_EQ(ask(questions), NSAlertOtherReturn);
  EXPECT_FALSE(questions.asked().front().answer.has_value());
}

TEST(QuestionsUnitTest, APersonChoosesByNumber) {
  std::istringstream in("3\nyes\n2\n\n1\n");
  std::ostringstream out;
  Questions questions({std::nullopt, &in}, out);
  EXPECT_EQ(ask(questions), NSAlertAlternateReturn);
  EXPECT_EQ(ask(questions), NSAlertDefaultReturn);
  EXPECT_EQ(ask(questions), NSAlertDefaultReturn);
  EXPECT_EQ(ask(questions), NSAlertOtherReturn);  // the input has ended
  EXPECT_NE(questions.unanswered(), nullptr);
  EXPECT_TRUE(
      out.str().starts_with("\nTitle\n\nMessage\n\n  1  Yes  (default)\n  2  No\n\nYour choice [1]: Please "
                            "type a number from 1 to 2.\n"));
}

TEST(QuestionsUnitTest, TheWordsAndTheButtonsOfAnswers) {
  const Question question{"", "", {"a", "b", "c"}, std::nullopt};
  EXPECT_EQ(answerWord(1), "default");
  EXPECT_EQ(answerWord(-1), "other");
  EXPECT_EQ(buttonOf(question, 0), "b");
}

}  // namespace
}  // namespace norvik::command
