// The methods, the limits, and the end after a while without work.
#include "src/helper/service.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <exception>
#include <optional>
#include <utility>

#include "src/adapters/linux/helper_interface.h"
#include "src/helper/journal.h"
#include "src/helper/safe_files.h"

namespace norvik::helper {

namespace {

// Lines that wait are memory of the super-user's, and anybody may call.
constexpr std::size_t kMostLinesOfUser = 32;
// Callers whom the bus has been asked about. One user cannot have as many connections.
constexpr std::size_t kMostUnknownCallers = 512;

// Nothing but the beginning of a line that is too long is looked at.
std::optional<Words> readArguments(sd_bus_message* call) {
  Words arguments;
  const char* text = nullptr;
  if (sd_bus_message_enter_container(call, 'a', "s") < 0) return std::nullopt;
  while (arguments.size() <= kMaxArguments && sd_bus_message_read(call, "s", &text) > 0)
    arguments.emplace_back(text);
  sd_bus_message_exit_container(call);  // fails before its end, and then the line is refused anyway
  return arguments;
}

// The caller's lock for changes, if one was handed over: a descriptor of the folder that is locked. Nothing
// for anything else.
std::optional<Descriptor> readLock(sd_bus_message* call, const Computer& computer) {
  int given = -1;
  if (sd_bus_message_enter_container(call, 'a', "h") < 0) return std::nullopt;
  if (sd_bus_message_at_end(call, 0) > 0) return Descriptor();
  if (sd_bus_message_read(call, "h", &given) <= 0 || sd_bus_message_at_end(call, 0) == 0) return std::nullopt;
  if (!isLockFolder(given, computer.root)) return std::nullopt;
  Descriptor lock(::fcntl(given, F_DUPFD_CLOEXEC, 3));
  return lock ? std::optional(std::move(lock)) : std::nullopt;
}

// The boundary to the C library: nothing is thrown through it.
int takeCall(sd_bus_message* call, void* data, bool wantsOutput) {
  try {
    static_cast<Service*>(data)->take(call, wantsOutput);
    return 1;
  } catch (const std::exception&) {
    return -ENOMEM;
  }
}

int run(sd_bus_message* call, void* data, sd_bus_error*) {
  return takeCall(call, data, false);
}

int runWithOutput(sd_bus_message* call, void* data, sd_bus_error*) {
  return takeCall(call, data, true);
}

// Unprivileged, because polkit decides and not the bus.
constexpr sd_bus_vtable kMethods[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD_WITH_ARGS("Run", SD_BUS_ARGS("s", tool, "as", arguments, "ah", lock),
                            SD_BUS_RESULT("u", number), run, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD_WITH_ARGS("RunWithOutput", SD_BUS_ARGS("s", tool, "as", arguments, "ah", lock),
                            SD_BUS_RESULT("u", number, "h", output), runWithOutput,
                            SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_SIGNAL_WITH_ARGS("Ended", SD_BUS_ARGS("u", number, "b", killed, "i", status, "ay", words), 0),
    SD_BUS_VTABLE_END};

}  // namespace

struct Service::Call {
  std::shared_ptr<sd_bus_message> message;  // null once it has its reply
  std::string text;                         // of the line, for the journal
  std::optional<AllowedLine> line;
  Descriptor lock;
  bool wantsOutput = false;
  const char* reason = nullptr;  // why it is refused, from any caller
};

struct Service::Unknown {
  std::vector<Call> calls;  // in their order
  std::unique_ptr<Lookup> lookup;
};

Service::Service(sd_bus* bus, sd_event* event, Computer computer, std::chrono::microseconds idle)
    : around_{bus, event, std::move(computer),
              [this] { wake(finishing_ ? std::chrono::microseconds(0) : idle_); }},
      idle_(idle) {}

Service::~Service() {
  sd_event_source_disable_unref(timer_);
}

bool Service::start() {
  if (sd_event_add_time_relative(around_.event, &timer_, CLOCK_MONOTONIC,
                                 static_cast<uint64_t>(idle_.count()), 0, &Service::onTime, this) < 0)
    return false;
  // A call that has arrived comes before the end.
  sd_event_source_set_priority(timer_, SD_EVENT_PRIORITY_IDLE);
  return sd_bus_add_object_vtable(around_.bus, nullptr, kHelperPath, kHelperInterface, kMethods, this) >= 0 &&
         sd_bus_request_name(around_.bus, kHelperName, 0) >= 0;
}

Service::Call Service::read(sd_bus_message* message, bool wantsOutput) const {
  Call call;
  const char* tool = nullptr;
  call.wantsOutput = wantsOutput;
  call.reason = "not a line of the tool command table";
  if (sd_bus_message_read(message, "s", &tool) <= 0) return call;
  const std::optional<Words> arguments = readArguments(message);
  if (!arguments) return call;
  call.text = textOf(tool, *arguments);
  call.line = allowedLine(tool, *arguments);
  if (!call.line) return call;
  call.reason = "this line has no output";
  if (wantsOutput && call.line->row->work != Work::readKernelValue) return call;
  call.reason = "this is not the lock for changes";
  std::optional<Descriptor> lock = readLock(message, around_.computer);
  if (!lock) return call;
  call.lock = std::move(*lock);
  call.reason = nullptr;
  call.message.reset(sd_bus_message_ref(message), &sd_bus_message_unref);
  return call;
}

// What is no allowed line gets its reply at once, so that only short messages are kept, however long others
// are.
void Service::take(sd_bus_message* message, bool wantsOutput) {
  const char* const sender = sd_bus_message_get_sender(message);
  if (sender == nullptr) return;
  Call call = read(message, wantsOutput);
  if (call.reason != nullptr) sd_bus_reply_method_errorf(message, kHelperNotAllowed, "%s", call.reason);
  std::erase_if(queues_, [](const auto& entry) { return entry.second->size() == 0; });
  const auto known = queues_.find(sender);
  if (known != queues_.end()) return decide(known->second->caller(), std::move(call));
  lookUp(sender, std::move(call));
}

void Service::lookUp(const std::string& busName, Call call) {
  const auto found = unknown_.find(busName);
  const bool isNew = found == unknown_.end();
  if (isNew ? unknown_.size() >= kMostUnknownCallers : found->second.calls.size() >= kMostLinesOfUser)
    return refuse(call, nameOf(std::nullopt, busName), kHelperTooMany, "too many calls");
  Unknown& unknown = unknown_[busName];
  unknown.calls.push_back(std::move(call));
  if (!isNew) return;
  unknown.lookup = Lookup::ask(around_.bus, busName,
                               [this, busName](std::optional<uid_t> user) { onUser(busName, user); });
  if (!unknown.lookup) onUser(busName, std::nullopt);
}

void Service::onUser(const std::string& name, std::optional<uid_t> user) {
  // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the argument goes with its lookup
  const std::string busName = name;
  std::vector<Call> calls = std::move(unknown_[busName].calls);
  unknown_.erase(busName);
  for (Call& call : calls) {
    if (user) {
      decide({busName, *user}, std::move(call));
    } else {
      refuse(call, nameOf(user, busName), kHelperNotAuthorized, "the bus does not know the caller");
    }
  }
  if (isIdle()) around_.onEmpty();
}

void Service::decide(const Caller& caller, Call call) {
  const std::string who = nameOf(caller.user, caller.busName);
  if (call.reason != nullptr || linesOf(caller.user) >= kMostLinesOfUser)
    return refuse(call, who, kHelperTooMany, "too many lines");
  auto& queue = queues_[caller.busName];
  if (!queue) queue = std::make_unique<CallerQueue>(around_, caller);
  queue->take(call.message.get(), std::move(*call.line), std::move(call.lock), call.wantsOutput);
}

// With the error and the reason, unless it was refused for another one and has its reply.
void Service::refuse(const Call& call, const std::string& who, const char* error, const char* reason) {
  if (call.reason == nullptr) return helper::refuse(call.message.get(), who, call.text, error, reason);
  writeJournal(who, call.text, std::string("refused: ") + call.reason);
}

bool Service::isIdle() const {
  return unknown_.empty() && std::all_of(queues_.begin(), queues_.end(),
                                         [](const auto& entry) { return entry.second->size() == 0; });
}

std::size_t Service::linesOf(uid_t user) const {
  std::size_t count = 0;
  for (const auto& [name, queue] : queues_) {
    if (queue->caller().user == user) count += queue->size();
  }
  return count;
}

void Service::wake(std::chrono::microseconds after) {
  sd_event_source_set_time_relative(timer_, static_cast<uint64_t>(after.count()));
  sd_event_source_set_enabled(timer_, SD_EVENT_ONESHOT);
}

// Without the name, the bus starts a new helper for the next call. Those that are on their way to this one
// are taken before the timer's next turn.
void Service::finish() {
  finishing_ = true;
  sd_bus_release_name(around_.bus, kHelperName);
  wake(std::chrono::microseconds(0));
}

int Service::onTime(sd_event_source*, uint64_t, void* data) {
  auto& service = *static_cast<Service*>(data);
  if (!service.isIdle()) return 0;  // the last line's end wakes again
  if (!service.finishing_) {
    service.finish();
    return 0;
  }
  return sd_event_exit(service.around_.event, 0);
}

}  // namespace norvik::helper
