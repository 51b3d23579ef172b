// Two queues in a row: the calls that polkit is asked about, one at a time, and the lines that it granted.
#include "src/helper/caller_queue.h"

#include <utility>

#include "src/adapters/linux/helper_interface.h"
#include "src/helper/journal.h"

namespace norvik::helper {

namespace {

std::string lineText(const AllowedLine& line) {
  return textOf(line.row->command.tool, line.arguments);
}

std::string resultOf(const ToolEnding& ending) {
  const std::string words = ending.words.empty() ? "" : ": " + ending.words;
  if (ending.killed) return "killed by signal " + std::to_string(ending.status) + words;
  return (ending.status == 0 ? "done" : "failed, status " + std::to_string(ending.status)) + words;
}

}  // namespace

void refuse(sd_bus_message* call, const std::string& who, const std::string& line, const char* error,
            const char* reason) {
  writeJournal(who, line, std::string("refused: ") + reason);
  sd_bus_reply_method_errorf(call, error, "%s", reason);
}

CallerQueue::CallerQueue(const Surroundings& surroundings, Caller caller)
    : around_(surroundings),
      caller_(std::move(caller)),
      who_(nameOf(caller_.user, caller_.busName)),
      presence_(surroundings.bus, caller_.busName) {}

void CallerQueue::take(sd_bus_message* call, AllowedLine line, Descriptor lock, bool wantsOutput) {
  asked_.push_back(
      {{sd_bus_message_ref(call), &sd_bus_message_unref}, std::move(line), std::move(lock), wantsOutput});
  if (asked_.size() == 1) askAboutNext();
}

void CallerQueue::askAboutNext() {
  while (!asked_.empty()) {
    const Asked& next = asked_.front();
    const bool mayAsk = sd_bus_message_get_allow_interactive_authorization(next.call.get()) > 0;
    question_ = Question::ask(around_.bus, caller_, next.line.row->action, mayAsk,
                              [this](Answer answer) { onAnswer(answer); });
    if (question_) return;
    refuse(next.call.get(), who_, lineText(next.line), kHelperNoAuthority, "polkit cannot be asked");
    asked_.pop_front();
  }
}

// Who has gone meanwhile is not served: nobody would learn what was done in his name.
void CallerQueue::onAnswer(Answer answer) {
  question_.reset();
  Asked asked = std::move(asked_.front());
  asked_.pop_front();
  sd_bus_message* const call = asked.call.get();
  if (answer == Answer::noAuthority) {
    refuse(call, who_, lineText(asked.line), kHelperNoAuthority, "polkit does not answer");
  } else if (answer == Answer::refused || !presence_.isThere()) {
    refuse(call, who_, lineText(asked.line), kHelperNotAuthorized, "not authorized");
  } else {
    grant(std::move(asked));
  }
  askAboutNext();
  if (size() == 0) around_.onEmpty();
}

void CallerQueue::grant(Asked asked) {
  static uint32_t lastNumber = 0;
  const uint32_t number = ++lastNumber;
  Pipe pipe = asked.wantsOutput ? makePipe() : Pipe{};
  const int sent = asked.wantsOutput
                       ? sd_bus_reply_method_return(asked.call.get(), "uh", number, pipe.reading.number())
                       : sd_bus_reply_method_return(asked.call.get(), "u", number);
  if (sent < 0)
    return refuse(asked.call.get(), who_, lineText(asked.line), kHelperTooMany, "no reply can be sent");
  Granted granted{number, std::move(asked.line), std::move(asked.lock), std::move(pipe.writing)};
  if (asked.wantsOutput) return carryOutInside(std::move(granted));
  granted_.push_back(std::move(granted));
  if (granted_.size() == 1) carryOutNext();
}

// Tools run by themselves and tell their end later; everything else is done when this returns.
void CallerQueue::carryOutNext() {
  while (!granted_.empty()) {
    if (granted_.front().line.row->work == Work::startTool && startFirst()) return;
    Granted next = std::move(granted_.front());
    granted_.pop_front();
    carryOutInside(std::move(next));
  }
}

bool CallerQueue::startFirst() {
  const Granted& first = granted_.front();
  Words words{first.line.row->command.tool};
  words.insert(words.end(), first.line.arguments.begin(), first.line.arguments.end());
  tool_ = RunningTool::start(around_.event, around_.computer.root + words[0], words,
                             [this](const ToolEnding& ending) { onToolEnd(ending); });
  return tool_ != nullptr;
}

void CallerQueue::onToolEnd(const ToolEnding& ending) {
  Granted ended = std::move(granted_.front());
  granted_.pop_front();
  tool_.reset();
  tellEnd(ended, ending);
  carryOutNext();
  if (size() == 0) around_.onEmpty();
}

// A tool that could not be started is reported as failed.
void CallerQueue::carryOutInside(Granted granted) {
  const StepOutcome outcome = carryOut(around_.computer, granted.line, caller_.user);
  if (granted.output) writeAll(granted.output, outcome.output);
  granted.output.reset();  // the reader finds its end
  tellEnd(granted, {.killed = false, .status = outcome.status, .words = outcome.words});
}

// The words go as bytes, because a tool may write what is no UTF-8. Whoever learns of the end finds the lock
// free.
void CallerQueue::tellEnd(Granted& ended, const ToolEnding& ending) {
  ended.lock.reset();
  writeJournal(who_, lineText(ended.line), resultOf(ending));
  sd_bus_message* made = nullptr;
  if (sd_bus_message_new_signal(around_.bus, &made, kHelperPath, kHelperInterface, "Ended") < 0) return;
  const std::unique_ptr<sd_bus_message, decltype(&sd_bus_message_unref)> message(made, &sd_bus_message_unref);
  const int killed = ending.killed ? 1 : 0;
  const bool isFilled = sd_bus_message_set_destination(made, caller_.busName.c_str()) >= 0 &&
                        sd_bus_message_append(made, "ubi", ended.number, killed, ending.status) >= 0 &&
                        sd_bus_message_append_array(made, 'y', ending.words.data(), ending.words.size()) >= 0;
  if (isFilled) sd_bus_send(around_.bus, made, nullptr);
}

}  // namespace norvik::helper
