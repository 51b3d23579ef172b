// norvik-helper: everything that the panel does as the super-user, and nothing else.
//   norvik-helper                       serves on the system bus, which starts it when somebody calls
//   norvik-helper --line TOOL [WORD]... carries out one line for the super-user, where there is no bus
//
// Whatever surrounds it is not to be relied on: environment, descriptors, signals and limits may be
// anybody's.
#include <sys/auxv.h>
#include <sys/stat.h>
#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <memory>
#include <optional>
#include <string>

#include "src/adapters/linux/helper_interface.h"
#include "src/helper/journal.h"
#include "src/helper/service.h"
#include "src/helper/tool_start.h"

namespace norvik::helper {
namespace {

constexpr int kUsage = 64;
constexpr int kNoBus = 69;
constexpr int kNoRights = 77;
constexpr int kNotCarriedOut = 1;

constexpr const char* kUsageText =
    "usage: norvik-helper [--line TOOL [WORD]...]\n"
    "Without a word it serves on the system bus, which starts it. Only the super-user runs it.\n";

constexpr std::chrono::minutes kIdle{1};

using Bus = std::unique_ptr<sd_bus, decltype(&sd_bus_flush_close_unref)>;
using Event = std::unique_ptr<sd_event, decltype(&sd_event_unref)>;

int say(const std::string& text, int status) {
  std::fputs(text.c_str(), stderr);
  return status;
}

// False for a program with the set-user-ID bit, which any user could start.
bool isSuperUser() {
  return ::getuid() == 0 && ::geteuid() == 0 && ::getauxval(AT_SECURE) == 0;
}

// Both are waited for by the event loop. A full file size limit is a write that fails.
void prepareSignals() {
  sigset_t awaited;
  sigemptyset(&awaited);
  for (const int signal : {SIGCHLD, SIGTERM, SIGINT}) sigaddset(&awaited, signal);
  ::sigprocmask(SIG_SETMASK, &awaited, nullptr);
  struct sigaction action {};
  action.sa_handler = SIG_DFL;  // an ignored end of a child could not be waited for
  ::sigaction(SIGCHLD, &action, nullptr);
  action.sa_handler = SIG_IGN;
  for (const int signal : {SIGPIPE, SIGXFSZ, SIGHUP}) ::sigaction(signal, &action, nullptr);
}

int onSignal(sd_event_source*, const signalfd_siginfo*, void* service) {
  static_cast<Service*>(service)->finish();
  return 0;
}

int serve() {
  sd_event* madeEvent = nullptr;
  sd_bus* madeBus = nullptr;
  if (sd_event_new(&madeEvent) < 0) return kNoBus;
  const Event event(madeEvent, &sd_event_unref);
  const int opened = sd_bus_open_system(&madeBus);
  const Bus bus(madeBus, &sd_bus_flush_close_unref);
  if (opened < 0) return say("norvik-helper: there is no system bus\n", kNoBus);
  sd_bus_set_exit_on_disconnect(madeBus, 1);
  Service service(madeBus, madeEvent, Computer(), kIdle);
  const bool isReady = sd_bus_attach_event(madeBus, madeEvent, SD_EVENT_PRIORITY_NORMAL) >= 0 &&
                       sd_event_add_signal(madeEvent, nullptr, SIGTERM, &onSignal, &service) >= 0 &&
                       sd_event_add_signal(madeEvent, nullptr, SIGINT, &onSignal, &service) >= 0 &&
                       service.start();
  if (!isReady) return say("norvik-helper: the bus does not give it the name\n", kNoBus);
  return sd_event_loop(madeEvent) < 0 ? kNoBus : 0;
}

// The starter waits for the tool's end, so the process becomes the tool.
int carryOutDirectly(const Words& words) {
  const std::string& tool = words.front();
  const Words arguments(words.begin() + 1, words.end());
  const std::string who = nameOf(::getuid(), "");
  const std::optional<AllowedLine> line = allowedLine(tool, arguments);
  if (!line) {
    writeJournal(who, textOf(tool, arguments), "refused: not a line of the tool command table");
    return say("norvik-helper: this is not a line that it carries out\n", kUsage);
  }
  if (line->row->work == Work::startTool) {
    writeJournal(who, textOf(tool, arguments), "started");
    becomeTool(tool, words);
    return kNotCarriedOut;
  }
  const StepOutcome outcome = carryOut(Computer(), *line, ::getuid());
  writeJournal(who, textOf(tool, arguments), outcome.status == 0 ? "done" : "failed: " + outcome.words);
  if (!outcome.words.empty()) say(outcome.words + "\n", 0);
  return std::fputs(outcome.output.c_str(), stdout) < 0 || std::fflush(stdout) != 0 ? kNotCarriedOut
                                                                                    : outcome.status;
}

int run(const Words& words) {
  if (!words.empty() && words != Words{"--help"} && (words[0] != kHelperLineOption || words.size() < 2))
    return say(kUsageText, kUsage);
  if (words == Words{"--help"}) return std::fputs(kUsageText, stdout) < 0 ? kNotCarriedOut : 0;
  if (!isSuperUser()) return say("norvik-helper: only the super-user runs it\n", kNoRights);
  openJournal();
  return words.empty() ? serve() : carryOutDirectly(Words(words.begin() + 1, words.end()));
}

}  // namespace
}  // namespace norvik::helper

int main(int argc, char** argv) {
  using namespace norvik::helper;
  if (!openStandardStreams()) return kNotCarriedOut;
  clearEnvironment();
  allowManyDescriptors();
  ::umask(022);
  prepareSignals();
  if (argc < 1) return kUsage;
  try {
    return run(Words(argv + 1, argv + argc));
  } catch (const std::exception&) {
    return say("norvik-helper: there is not enough memory\n", kNotCarriedOut);
  }
}
