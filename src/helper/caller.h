// Identifies the caller by the bus, and asks polkit at every call whether the caller is allowed. Keeps no
// decision.
#pragma once

#include <sys/types.h>
#include <systemd/sd-bus.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace norvik::helper {

struct Caller {
  std::string busName;  // unique, and never given to anybody else
  uid_t user;
};

// Nothing where the bus does not say, for example because the caller has gone.
std::optional<Caller> callerOf(sd_bus_message* call);

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
