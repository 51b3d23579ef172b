// The lines of one caller: each is authorized, told to be granted or refused, and carried out, all in the
// order of the calls.
#pragma once

#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>

#include "src/helper/caller.h"
#include "src/helper/running_tool.h"
#include "src/helper/steps.h"

namespace norvik::helper {

// What a queue works with. Borrowed.
struct Surroundings {
  sd_bus* bus;
  sd_event* event;
  Computer computer;
  std::function<void()> onEmpty;  // called when a queue has nothing left to do
};

// The words for the journal, and the error for the caller.
void refuse(sd_bus_message* call, const std::string& who, const std::string& line, const char* error,
            const char* reason);

class CallerQueue {
 public:
  CallerQueue(const Surroundings& surroundings, Caller caller);

  const Caller& caller() const { return caller_; }
  // How many lines have not ended.
  std::size_t size() const { return asked_.size() + granted_.size(); }

  // `lock` is kept until the line has ended; it may be none.
  void take(sd_bus_message* call, AllowedLine line, Descriptor lock, bool wantsOutput);

 private:
  struct Asked {
    std::shared_ptr<sd_bus_message> call;
    AllowedLine line;
    Descriptor lock;
    bool wantsOutput;
  };
  struct Granted {
    uint32_t number;
    AllowedLine line;
    Descriptor lock;    // the caller's, for changes; may be none
    Descriptor output;  // the writing end; none where nobody reads
  };

  void askAboutNext();
  void onAnswer(Answer answer);
  void grant(Asked asked);
  void carryOutNext();
  bool startFirst();
  void onToolEnd(const ToolEnding& ending);
  void carryOutInside(Granted granted);
  void tellEnd(Granted& ended, const ToolEnding& ending);

  const Surroundings& around_;
  Caller caller_;
  std::string who_;
  Presence presence_;
  std::deque<Asked> asked_;
  std::unique_ptr<Question> question_;  // about the first of them
  std::deque<Granted> granted_;         // without those that only report
  std::unique_ptr<RunningTool> tool_;   // of the first of them
};

}  // namespace norvik::helper
