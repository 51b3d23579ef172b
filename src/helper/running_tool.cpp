// Needs the signal of ended children to be blocked, as the event loop waits for it.
#include "src/helper/running_tool.h"

#include <sys/epoll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <utility>

#include "src/server/mac/text/trim.h"

namespace norvik::helper {

RunningTool::RunningTool(StartedTool tool, OnEnd onEnd) : tool_(std::move(tool)), onEnd_(std::move(onEnd)) {}

RunningTool::~RunningTool() {
  sd_event_source_disable_unref(wordsSource_);
  sd_event_source_disable_unref(exitSource_);
}

std::unique_ptr<RunningTool> RunningTool::start(sd_event* event, const std::string& program,
                                                const Words& words, OnEnd onEnd) {
  std::unique_ptr<RunningTool> running(new RunningTool(startTool(program, words), std::move(onEnd)));
  return running->watch(event) ? std::move(running) : nullptr;
}

bool RunningTool::watch(sd_event* event) {
  return tool_.process > 0 &&
         sd_event_add_io(event, &wordsSource_, tool_.words.number(), EPOLLIN, &RunningTool::onWords, this) >=
             0 &&
         sd_event_add_child(event, &exitSource_, tool_.process, WEXITED, &RunningTool::onExit, this) >= 0;
}

// Reads once, keeps the beginning and discards the rest, so that the tool never has to wait. False where
// there is nothing to read.
bool RunningTool::hear() {
  std::array<char, 4096> block;
  const ssize_t count = ::read(tool_.words.number(), block.data(), block.size());
  if (count <= 0) return false;
  words_.append(block.data(), std::min(static_cast<std::size_t>(count), kLongestWords - words_.size()));
  return true;
}

int RunningTool::onWords(sd_event_source* source, int, uint32_t, void* data) {
  if (!static_cast<RunningTool*>(data)->hear()) sd_event_source_set_enabled(source, SD_EVENT_OFF);
  return 0;
}

// A daemon that the tool left behind may go on writing, so there is a limit to what is still heard.
int RunningTool::onExit(sd_event_source*, const siginfo_t* end, void* data) {
  constexpr int kBlocksInPipe = 32;  // twice as many as the system keeps
  auto& running = *static_cast<RunningTool*>(data);
  for (int i = 0; i < kBlocksInPipe && running.hear(); ++i) continue;
  const ToolEnding ending{.killed = end->si_code != CLD_EXITED,
                          .status = end->si_status,
                          .words = std::string(trimmed(running.words_))};
  const OnEnd told = std::move(running.onEnd_);
  told(ending);  // this object may be gone from here on
  return 0;
}

}  // namespace norvik::helper
