// A system bus of the test's own with somebody on it who answers as polkit does, when the test says so: for
// what a program does while a person looks for a password.
#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <thread>

#include "tests/support/session_bus.h"

namespace norvik {

class PolkitStandIn {
 public:
  // This process takes the bus for the system's in each connection that it makes from now on. The test fails
  // where there can be no bus.
  PolkitStandIn();
  ~PolkitStandIn();
  PolkitStandIn(const PolkitStandIn&) = delete;
  PolkitStandIn& operator=(const PolkitStandIn&) = delete;

  enum class Answer { none, granted, refused, dismissed, noAgent };
  // Answers every question with this, the one that waits included; none lets questions wait, for as long as a
  // test has patience, and then refuses.
  void answer(Answer answer) { answer_ = answer; }
  // How many questions were asked so far.
  int questions() const { return questions_; }

 private:
  struct Connection;
  void serve();

  const SessionBus bus_;
  std::unique_ptr<Connection> connection_;
  std::atomic<Answer> answer_ = Answer::none;
  std::atomic<int> questions_ = 0;
  std::atomic<bool> ends_ = false;
  std::thread thread_;
};

}  // namespace norvik
