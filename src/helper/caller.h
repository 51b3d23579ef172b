// Identifies the caller by the bus, and asks polkit at every call whether the caller is allowed. Keeps no
// decision. Nothing here waits for an answer: while it waits, a bus connection keeps whatever else arrives,
// and anybody may send as much as they like.
#pragma once

#include <sys/types.h>
#include <systemd/sd-bus.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace norvik::helper {

struct Caller {
  std::string busName;  // unique, and never given to anybody else
  uid_t user;
};

// The question to the bus who has a name on it.
class Lookup {
 public:
  // Nothing where the bus does not say, for example because the caller has gone.
  using OnUser = std::function<void(std::optional<uid_t> user)>;

  // `onUser` is called once, later, from the bus's event loop, unless this object goes first; it may destroy
  // it. Null if the question cannot be sent.
  static std::unique_ptr<Lookup> ask(sd_bus* bus, const std::string& busName, OnUser onUser);
  ~Lookup();
  Lookup(const Lookup&) = delete;
  Lookup& operator=(const Lookup&) = delete;

 private:
  explicit Lookup(OnUser onUser) : onUser_(std::move(onUser)) {}
  static int onReply(sd_bus_message* reply, void* data, sd_bus_error* error);

  OnUser onUser_;
  sd_bus_slot* slot_ = nullptr;
};

// Whether a caller is still on the bus.
class Presence {
 public:
  Presence(sd_bus* bus, std::string busName);
  ~Presence();
  Presence(const Presence&) = delete;
  Presence& operator=(const Presence&) = delete;

  // As of the last message that was handled. False too where it cannot be known.
  bool isThere() const;

 private:
  std::string busName_;
  sd_bus_track* track_ = nullptr;
};

enum class Answer {
  granted,
  refused,
  noAuthority,  // polkit cannot be asked or does not answer
};

// A question to polkit. It is withdrawn where this object goes before the answer comes.
class Question {
 public:
  using OnAnswer = std::function<void(Answer)>;

  // Asks whether the caller may do what the action stands for. `mayAsk` allows polkit to ask a person, for as
  // long as five minutes. `onAnswer` is called once, later, from the bus's event loop; it may destroy the
  // question. Null if the question cannot be sent.
  static std::unique_ptr<Question> ask(sd_bus* bus, const Caller& caller, const char* action, bool mayAsk,
                                       OnAnswer onAnswer);
  ~Question();
  Question(const Question&) = delete;
  Question& operator=(const Question&) = delete;

 private:
  Question(sd_bus* bus, OnAnswer onAnswer);
  bool send(const Caller& caller, const char* action, bool mayAsk);
  void withdraw() const;
  static int onReply(sd_bus_message* reply, void* data, sd_bus_error* error);

  sd_bus* bus_;
  OnAnswer onAnswer_;
  std::string cancellation_;
  sd_bus_slot* slot_ = nullptr;
};

}  // namespace norvik::helper
