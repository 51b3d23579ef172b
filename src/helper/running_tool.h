// A tool that was started, until it has ended: its status and what it says.
#pragma once

#include <systemd/sd-event.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "src/helper/tool_start.h"

namespace norvik::helper {

// How much of what a tool says on its standard error is kept, in bytes.
inline constexpr std::size_t kLongestWords = 4096;

struct ToolEnding {
  bool killed = false;
  int status = 0;  // the exit status, or the signal that killed it
  std::string words;
};

class RunningTool {
 public:
  using OnEnd = std::function<void(const ToolEnding&)>;

  // Starts the tool as startTool does. `onEnd` is called once, from the event loop; it may destroy this. Null
  // if no process can be made. The process continues if this object goes first.
  static std::unique_ptr<RunningTool> start(sd_event* event, const std::string& program, const Words& words,
                                            OnEnd onEnd);
  ~RunningTool();
  RunningTool(const RunningTool&) = delete;
  RunningTool& operator=(const RunningTool&) = delete;

 private:
  RunningTool(StartedTool tool, OnEnd onEnd);
  bool watch(sd_event* event);
  bool hear();
  static int onWords(sd_event_source* source, int file, uint32_t events, void* data);
  static int onExit(sd_event_source* source, const siginfo_t* end, void* data);

  StartedTool tool_;
  OnEnd onEnd_;
  std::string words_;
  sd_event_source* wordsSource_ = nullptr;
  sd_event_source* exitSource_ = nullptr;
};

}  // namespace norvik::helper
