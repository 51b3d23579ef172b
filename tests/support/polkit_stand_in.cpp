// A message bus for sessions, which lets everybody have every name, and a thread that serves on it.
#include "tests/support/polkit_stand_in.h"

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <cstdlib>

#include "tests/support/waiting.h"

namespace norvik {

struct PolkitStandIn::Connection {
  sd_bus* bus = nullptr;
  sd_bus_message* question = nullptr;  // that waits; a newer one takes its place
  std::chrono::steady_clock::time_point limit = {};

  ~Connection() {
    sd_bus_message_unref(question);
    sd_bus_flush_close_unref(bus);
  }
};

namespace {

constexpr const char* kBusVariable = "DBUS_SYSTEM_BUS_ADDRESS";
constexpr uint64_t kTurn = 5000;  // microseconds

struct Reply {
  int isAuthorized;
  int isChallenge;
  const char* detail;  // that is "true"; null for none
};

Reply replyOf(PolkitStandIn::Answer answer) {
  using Answer = PolkitStandIn::Answer;
  switch (answer) {
    case Answer::granted:
      return {1, 0, nullptr};
    case Answer::dismissed:
      return {0, 0, "polkit.dismissed"};
    case Answer::noAgent:
      return {0, 1, nullptr};
    case Answer::refused:
    case Answer::none:
      break;
  }
  return {0, 0, nullptr};
}

void reply(sd_bus_message* question, PolkitStandIn::Answer answer) {
  const Reply words = replyOf(answer);
  sd_bus_message* message = nullptr;
  EXPECT_GE(sd_bus_message_new_method_return(question, &message), 0);
  EXPECT_GE(sd_bus_message_open_container(message, 'r', "bba{ss}"), 0);
  EXPECT_GE(sd_bus_message_append(message, "bb", words.isAuthorized, words.isChallenge), 0);
  if (words.detail != nullptr) {
    EXPECT_GE(sd_bus_message_append(message, "a{ss}", 1, words.detail, "true"), 0);
  } else {
    EXPECT_GE(sd_bus_message_append(message, "a{ss}", 0), 0);
  }
  EXPECT_GE(sd_bus_message_close_container(message), 0);
  EXPECT_GE(sd_bus_send(nullptr, message, nullptr), 0);
  sd_bus_message_unref(message);
}

}  // namespace

PolkitStandIn::PolkitStandIn() : connection_(std::make_unique<Connection>()) {
  ::setenv(kBusVariable, bus_.address().c_str(), 1);
  EXPECT_GE(sd_bus_open_system(&connection_->bus), 0);
  EXPECT_GE(sd_bus_request_name(connection_->bus, "org.freedesktop.PolicyKit1", 0), 0);
  thread_ = std::thread([this] { serve(); });
}

PolkitStandIn::~PolkitStandIn() {
  ends_ = true;
  thread_.join();
  ::unsetenv(kBusVariable);
}

void PolkitStandIn::serve() {
  while (!ends_) {
    sd_bus_message* message = nullptr;
    if (sd_bus_process(connection_->bus, &message) == 0) sd_bus_wait(connection_->bus, kTurn);
    if (sd_bus_message_is_method_call(message, nullptr, "CheckAuthorization") > 0) {
      sd_bus_message_unref(connection_->question);
      connection_->question = sd_bus_message_ref(message);
      connection_->limit = std::chrono::steady_clock::now() + kPatience;
      ++questions_;
    }
    sd_bus_message_unref(message);
    const bool isDue = answer_ != Answer::none || std::chrono::steady_clock::now() > connection_->limit;
    if (connection_->question == nullptr || !isDue) continue;
    reply(connection_->question, answer_);
    connection_->question = sd_bus_message_unref(connection_->question);
  }
}

}  // namespace norvik
