// Accepts signals only from the helper, which is identified by the sender that the bus names in its reply.
#include "src/adapters/linux/helper_client.h"

#include <fcntl.h>

#include <algorithm>
#include <csignal>
#include <utility>

#include "src/adapters/linux/helper_interface.h"
#include "src/server/mac/text/trim.h"

namespace norvik {

namespace {

using std::chrono::steady_clock;

// Longer than polkit asks a person for.
constexpr std::chrono::microseconds kLongestAnswer = std::chrono::minutes(6);
constexpr std::chrono::microseconds kWaitTurn = std::chrono::milliseconds(50);

constexpr const char* kLost = "the helper is gone, and nobody knows how this ended";

// The bus gets a copy of the descriptor.
bool appendLock(sd_bus_message* call, const Descriptor* lock) {
  return sd_bus_message_open_container(call, 'a', "h") >= 0 &&
         (lock == nullptr || sd_bus_message_append(call, "h", lock->number()) >= 0) &&
         sd_bus_message_close_container(call) >= 0;
}

BusReply askHelper(SystemBus& bus, const std::string& tool, const std::vector<std::string>& arguments,
                   bool mayAsk, bool wantsOutput, const Descriptor* lock) {
  const BusMessage call =
      bus.newCall(kHelperName, kHelperPath, kHelperInterface, wantsOutput ? "RunWithOutput" : "Run");
  bool isFilled = call && sd_bus_message_append(call.get(), "s", tool.c_str()) >= 0 &&
                  sd_bus_message_open_container(call.get(), 'a', "s") >= 0;
  for (const std::string& argument : arguments)
    isFilled = isFilled && sd_bus_message_append(call.get(), "s", argument.c_str()) >= 0;
  isFilled = isFilled && sd_bus_message_close_container(call.get()) >= 0 && appendLock(call.get(), lock) &&
             sd_bus_message_set_allow_interactive_authorization(call.get(), mayAsk ? 1 : 0) >= 0;
  return isFilled ? bus.call(call, kLongestAnswer) : BusReply();
}

bool isForWantOfRights(const std::string& error) {
  return error == kHelperNotAuthorized || error == kHelperNoAuthority || error == SD_BUS_ERROR_ACCESS_DENIED;
}

}  // namespace

HelperClient::HelperClient(SystemBus& bus, Lock lock) : bus_(bus), lock_(std::move(lock)) {
  bus_.onConnect = [this](sd_bus* connection) { listen(connection); };
  bus_.onLost = [this] { lose(nullptr); };
}

HelperClient::~HelperClient() {
  sd_bus_slot_unref(watch_);
  bus_.onConnect = nullptr;
  bus_.onLost = nullptr;
}

void HelperClient::listen(sd_bus* bus) {
  sd_bus_match_signal(bus, nullptr, nullptr, kHelperPath, kHelperInterface, "Ended", &HelperClient::onEnded,
                      this);
}

// A helper that died before it was watched is noticed by asking the bus for it once.
void HelperClient::watch(const std::string& helper) {
  sd_bus* const bus = bus_.connection();
  if (bus == nullptr || helper == watched_) return;
  watch_ = sd_bus_slot_unref(watch_);
  const std::string rule =
      "type='signal',sender='org.freedesktop.DBus',member='NameOwnerChanged',arg0='" + helper + "'";
  sd_bus_add_match(bus, &watch_, rule.c_str(), &HelperClient::onOwnerChanged, this);
  watched_ = helper;
  sd_bus_creds* creds = nullptr;
  if (sd_bus_get_name_creds(bus, helper.c_str(), SD_BUS_CREDS_EUID, &creds) < 0) lose(&helper);
  sd_bus_creds_unref(creds);
}

PrivilegedLines::Answer HelperClient::run(const std::string& tool, const std::vector<std::string>& arguments,
                                          bool mayAsk, Descriptor* output) {
  const std::shared_ptr<const Descriptor> lock = lock_ ? lock_() : nullptr;
  const BusReply reply = askHelper(bus_, tool, arguments, mayAsk, output != nullptr, lock.get());
  if (!reply) return isForWantOfRights(reply.error) ? Answer::refused : Answer::notPossible;
  uint32_t number = 0;
  int descriptor = -1;
  if (sd_bus_message_read(reply.message.get(), "u", &number) <= 0) return Answer::notPossible;
  if (output != nullptr && sd_bus_message_read(reply.message.get(), "h", &descriptor) > 0)
    *output = Descriptor(::fcntl(descriptor, F_DUPFD_CLOEXEC, 3));
  const std::string helper = sd_bus_message_get_sender(reply.message.get());
  const auto line = std::make_shared<Line>();
  line->helper = helper;
  line->number = number;
  line->outcome.tool = tool;
  line->outcome.arguments = arguments;
  running_.push_back(line);
  reported_.push_back(line);
  watch(helper);
  return Answer::launched;
}

void HelperClient::end(const std::string& helper, uint32_t number, ToolOutcome outcome) {
  const auto found = std::ranges::find_if(
      running_, [&](const auto& line) { return line->helper == helper && line->number == number; });
  if (found == running_.end()) return;
  outcome.tool = (*found)->outcome.tool;
  outcome.arguments = (*found)->outcome.arguments;
  (*found)->outcome = std::move(outcome);
  running_.erase(found);
}

// Of that helper; of all where the bus is gone.
void HelperClient::lose(const std::string* helper) {
  const auto isLost = [&](const auto& line) { return helper == nullptr || line->helper == *helper; };
  for (const auto& line : running_) {
    if (!isLost(line)) continue;
    line->outcome.end = ToolOutcome::End::killed;
    line->outcome.status = SIGKILL;
    line->outcome.words = kLost;
  }
  std::erase_if(running_, isLost);
  watched_.clear();
}

int HelperClient::onEnded(sd_bus_message* message, void* data, sd_bus_error*) {
  const char* const sender = sd_bus_message_get_sender(message);
  uint32_t number = 0;
  int killed = 0;
  int status = 0;
  const void* words = nullptr;
  std::size_t length = 0;
  if (sender == nullptr || sd_bus_message_read(message, "ubi", &number, &killed, &status) <= 0) return 0;
  if (sd_bus_message_read_array(message, 'y', &words, &length) < 0) return 0;
  ToolOutcome outcome;
  outcome.end = killed != 0 ? ToolOutcome::End::killed : ToolOutcome::End::exited;
  outcome.status = status;
  outcome.words = trimmed({static_cast<const char*>(words), std::min(length, kLongestToolWords)});
  static_cast<HelperClient*>(data)->end(sender, number, std::move(outcome));
  return 0;
}

int HelperClient::onOwnerChanged(sd_bus_message* message, void* data, sd_bus_error*) {
  const char* name = nullptr;
  if (sd_bus_message_read(message, "s", &name) <= 0) return 0;
  const std::string helper = name;
  static_cast<HelperClient*>(data)->lose(&helper);
  return 0;
}

bool HelperClient::wait(std::chrono::milliseconds limit) {
  const auto end = steady_clock::now() + limit;
  bus_.process(std::chrono::microseconds(0));
  while (!running_.empty() && steady_clock::now() < end && bus_.process(kWaitTurn)) continue;
  return running_.empty();
}

std::vector<ToolOutcome> HelperClient::outcomes() {
  bus_.process(std::chrono::microseconds(0));
  std::vector<ToolOutcome> outcomes;
  bool isFirst = true;
  for (const auto& line : reported_) {
    outcomes.push_back(line->outcome);
    if (line->outcome.ended()) continue;
    outcomes.back().end = isFirst ? ToolOutcome::End::running : ToolOutcome::End::waiting;
    isFirst = false;
  }
  return outcomes;
}

}  // namespace norvik
