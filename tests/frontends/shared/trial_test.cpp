// A change on trial: its record, what a program leaves that does not survive it, and taking it back.
#include "src/frontends/shared/trial/trial.h"

#include "src/frontends/shared/trial/countdown.h"
#include "src/frontends/shared/trial/trial_return.h"
#include "tests/frontends/shared/changing_pane.h"

namespace norvik {

using namespace std::chrono_literals;

TEST(CountdownTest, GoesByTheGivenClock) {
  std::chrono::milliseconds now{100};
  const Countdown countdown([&now] { return now; }, 60s);
  EXPECT_EQ(countdown.left(), 60s);
  now += 1ms;
  EXPECT_EQ(countdown.left(), 60s);
  EXPECT_EQ(countdown.remaining(), 59'999ms);
  now += 59'000ms;
  EXPECT_EQ(countdown.left(), 1s);
  EXPECT_FALSE(countdown.isOver());
  now += 999ms;
  EXPECT_TRUE(countdown.isOver());
  now += 1h;
  EXPECT_EQ(countdown.left(), 0s);
  EXPECT_EQ(countdown.remaining(), 0ms);
}

class TrialTest : public ChangingPane {
 protected:
  using Recorded = std::vector<RecordedSetting>;

  std::string place() { return computer.userState.placeOf(kTrialFile); }
  // As a front end does: written down, then put into force.
  void tryPort(const std::string& port) {
    typeNvkPort(port);
    tried = recordedOf(*pane, change->pending());
    ASSERT_FALSE(trials.begin(tried, StopsServer::no, 60s));
    ASSERT_TRUE(apply().ok());
  }
  TrialReturn takeBack(const Recorded& settings) {
    EditedPane edited(*pane, interface);
    return takeBackSettings(settings, edited, *change, computer.platform(), interface, person);
  }

  Trials trials{computer.userState, "window"};
  Trials other{computer.userState, "norvikctl"};
  Recorded tried;
};

TEST_F(TrialTest, IsWrittenDownBeforeItIsPutIntoForce) {
  open();
  tryPort("5073");
  EXPECT_NE(bytesAt(place()).find("\"until\": \"2010-07-05T05:21:00Z\""), std::string::npos)
      << bytesAt(place());
  EXPECT_FALSE(other.abandoned().has_value()) << "its program lives";
  EXPECT_EQ(other.begin({}, StopsServer::no, 60s).code, FailureCode::tryAgain);
  EXPECT_EQ(trials.end(), "");
  EXPECT_EQ(bytesAt(place()), "missing");
  EXPECT_FALSE(other.begin({}, StopsServer::no, 60s));
}

TEST_F(TrialTest, IsTakenBack) {
  open();
  tryPort("5073");
  const TrialReturn back = takeBack(tried);
  EXPECT_TRUE(back.report.ok());
  EXPECT_EQ(back.notes, std::vector<std::string>());
  EXPECT_EQ(storedNvkPort(), 4073);
}

TEST_F(TrialTest, WhatSomebodyElseChangedStays) {
  open();
  tryPort("5073");
  put(kServer, portFile(6000));
  const TrialReturn back = takeBack(tried);
  EXPECT_TRUE(back.report.ok());
  EXPECT_EQ(back.notes.size(), 2U);
  EXPECT_EQ(storedNvkPort(), 6000);
}

TEST_F(TrialTest, WithoutTheLockOpenItIsNotTakenBack) {
  open();
  tryPort("5073");
  loseRights();
  EXPECT_EQ(takeBack(tried).report.error.code, FailureCode::notAllowed);
  EXPECT_EQ(storedNvkPort(), 5073);
}

TEST_F(TrialTest, IsFoundByTheNextFrontEndWhereItsProgramHasEnded) {
  open();
  tryPort("5073");
  trials.leave();  // as when the program ends
  const auto left = other.abandoned();
  ASSERT_TRUE(left.has_value());
  EXPECT_EQ(left->frontEnd, "window");
  EXPECT_EQ(left->settings, tried);
  EXPECT_EQ(left->stopsServer, StopsServer::no);
  EXPECT_FALSE(trials.abandoned().has_value()) << "only one takes it back";
  EXPECT_TRUE(takeBack(left->settings).report.ok());
  other.end();
  EXPECT_FALSE(trials.abandoned().has_value());
}

TEST_F(TrialTest, AnotherOneWaitsUntilItIsTakenBack) {
  ASSERT_FALSE(trials.begin({}, StopsServer::yes, 60s));
  trials.leave();
  EXPECT_EQ(other.begin({}, StopsServer::no, 60s).code, FailureCode::tryAgain);
  EXPECT_EQ(other.abandoned()->stopsServer, StopsServer::yes);
}

TEST_F(TrialTest, ARecordThatCannotBeWrittenIsAFailure) {
  computer.fileFaults.set(FileOperation::write, place(), true);
  const ChangeError error = trials.begin({}, StopsServer::no, 60s);
  EXPECT_EQ(error.code, FailureCode::notWritten);
  EXPECT_NE(error.sentence.find("No space left on device. Nothing was changed."), std::string::npos);
  EXPECT_EQ(other.begin({}, StopsServer::no, 60s).code, FailureCode::notWritten) << "and holds nothing";
}

TEST_F(TrialTest, ARecordThatIsNoneIsSaidAndDoesNothing) {
  EXPECT_EQ(trials.damage(), "");
  for (const std::string& bytes :
       {std::string("{"), std::string(3, '\0'), std::string("{\"norvikTrial\": 1, \"settings\": []}")}) {
    computer.fileSystem.put(place(), bytes);
    EXPECT_FALSE(trials.abandoned().has_value());
    EXPECT_EQ(trials.damage(),
              place() + " is no record of a change on trial, so nothing is taken back. Remove it.");
  }
  EXPECT_FALSE(trials.begin({}, StopsServer::no, 60s)) << "it is in nobody's way";
  EXPECT_EQ(trials.damage(), "");
}

TEST_F(TrialTest, IsWorthOfferingWhereConnectionsMayEnd) {
  open();
  switchBox(pane->ib_user_chkbox_mseSwap, true);
  EXPECT_FALSE(mayEndConnections(*pane, change->pending()));
  switchBox(pane->ib_admin_chkbox_rdpEnabled, false);
  EXPECT_TRUE(mayEndConnections(*pane, change->pending()));
  change->takeBackAll();
  typeNvkPort("5073");
  EXPECT_TRUE(mayEndConnections(*pane, change->pending()));
}

}  // namespace norvik
