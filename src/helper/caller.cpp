// The bus's GetConnectionUnixUser, and polkit's CheckAuthorization with the caller's name on the bus as the
// subject. Process ids are used nowhere: a number may be another process's by the time it is looked at.
#include "src/helper/caller.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <utility>

#include "src/adapters/linux/helper_interface.h"

namespace norvik::helper {

namespace {

constexpr std::chrono::microseconds kLongestCheck = std::chrono::seconds(25);
constexpr std::chrono::microseconds kLongestInteraction = std::chrono::minutes(5);

using Message = std::unique_ptr<sd_bus_message, decltype(&sd_bus_message_unref)>;

Message messageToPolkit(sd_bus* bus, const char* member) {
  sd_bus_message* made = nullptr;
  sd_bus_message_new_method_call(bus, &made, kPolkitName, kPolkitPath, kPolkitInterface, member);
  return {made, &sd_bus_message_unref};
}

Answer answerIn(sd_bus_message* reply) {
  int isAuthorized = 0;
  if (sd_bus_message_is_method_error(reply, nullptr) > 0) return Answer::noAuthority;
  // "Is a challenge" and details follow; neither makes an unauthorized caller an authorized one.
  if (sd_bus_message_enter_container(reply, 'r', "bba{ss}") <= 0) return Answer::noAuthority;
  if (sd_bus_message_read(reply, "b", &isAuthorized) <= 0) return Answer::noAuthority;
  return isAuthorized == 1 ? Answer::granted : Answer::refused;
}

}  // namespace

Lookup::~Lookup() {
  sd_bus_slot_unref(slot_);
}

std::unique_ptr<Lookup> Lookup::ask(sd_bus* bus, const std::string& busName, OnUser onUser) {
  std::unique_ptr<Lookup> lookup(new Lookup(std::move(onUser)));
  const int sent = sd_bus_call_method_async(
      bus, &lookup->slot_, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
      "GetConnectionUnixUser", &Lookup::onReply, lookup.get(), "s", busName.c_str());
  return sent >= 0 ? std::move(lookup) : nullptr;
}

int Lookup::onReply(sd_bus_message* reply, void* data, sd_bus_error*) {
  const OnUser told = std::move(static_cast<Lookup*>(data)->onUser_);
  uint32_t user = 0;
  const bool isKnown =
      sd_bus_message_is_method_error(reply, nullptr) == 0 && sd_bus_message_read(reply, "u", &user) > 0;
  told(isKnown ? std::optional<uid_t>(user) : std::nullopt);  // the lookup may be gone from here on
  return 0;
}

Presence::Presence(sd_bus* bus, std::string busName) : busName_(std::move(busName)) {
  if (sd_bus_track_new(bus, &track_, nullptr, nullptr) >= 0) sd_bus_track_add_name(track_, busName_.c_str());
}

Presence::~Presence() {
  sd_bus_track_unref(track_);
}

bool Presence::isThere() const {
  return track_ != nullptr && sd_bus_track_contains(track_, busName_.c_str()) != nullptr;
}

Question::Question(sd_bus* bus, OnAnswer onAnswer) : bus_(bus), onAnswer_(std::move(onAnswer)) {
  static uint64_t count = 0;
  cancellation_ = "norvik-" + std::to_string(++count);
}

Question::~Question() {
  if (slot_ == nullptr) return;
  sd_bus_slot_unref(slot_);
  withdraw();
}

std::unique_ptr<Question> Question::ask(sd_bus* bus, const Caller& caller, const char* action, bool mayAsk,
                                        OnAnswer onAnswer) {
  std::unique_ptr<Question> question(new Question(bus, std::move(onAnswer)));
  return question->send(caller, action, mayAsk) ? std::move(question) : nullptr;
}

bool Question::send(const Caller& caller, const char* action, bool mayAsk) {
  const Message message = messageToPolkit(bus_, "CheckAuthorization");
  if (!message) return false;
  const uint32_t flags = mayAsk ? kPolkitMayAsk : 0;
  const auto limit = static_cast<uint64_t>((mayAsk ? kLongestInteraction : kLongestCheck).count());
  return sd_bus_message_append(message.get(), "(sa{sv})sa{ss}us", "system-bus-name", 1, "name", "s",
                               caller.busName.c_str(), action, 0, flags, cancellation_.c_str()) >= 0 &&
         sd_bus_call_async(bus_, &slot_, message.get(), &Question::onReply, this, limit) >= 0;
}

// Takes away what a person is shown. Nobody waits for the reply.
void Question::withdraw() const {
  const Message message = messageToPolkit(bus_, "CancelCheckAuthorization");
  if (!message || sd_bus_message_append(message.get(), "s", cancellation_.c_str()) < 0) return;
  sd_bus_message_set_expect_reply(message.get(), 0);
  sd_bus_send(bus_, message.get(), nullptr);
}

int Question::onReply(sd_bus_message* reply, void* data, sd_bus_error*) {
  auto& question = *static_cast<Question*>(data);
  const Answer answer = answerIn(reply);
  if (answer == Answer::noAuthority) question.withdraw();
  question.slot_ = sd_bus_slot_unref(question.slot_);
  const OnAnswer told = std::move(question.onAnswer_);
  told(answer);  // the question may be gone from here on
  return 0;
}

}  // namespace norvik::helper
