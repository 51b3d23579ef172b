// Watching, starting and stopping the server daemon. Start and stop block while they count dots; the timer's
// refreshes are held off while the run loop is pumped.
#include "src/server/mac/control/server_process.h"

#include <algorithm>
#include <array>
#include <string>

#include "src/server/mac/pane/pane.h"
#include "src/server/mac/platform/log.h"
#include "src/server/mac/platform/open_file.h"
#include "src/server/mac/platform/platform.h"
#include "src/server/mac/text/trim.h"

namespace norvik {

namespace {

constexpr const char* kPidFile = "/var/run/nvkserverd.pid";
constexpr std::size_t kPidTextLength = 31;  // how much of the file is looked at

constexpr int kRunLoopPasses = 20;
constexpr uint32_t kRunLoopPassMicroseconds = 1'000;
constexpr uint32_t kDotMicroseconds = 1'000'000;

// White space, then digits; what exceeds 32 bits keeps its low 32. No sign is read.
int32_t leadingDecimal(std::string_view text) {
  uint32_t number = 0;
  for (const char c : withoutLeading(text, kCSpace)) {
    if (c < '0' || c > '9') break;
    number = number * 10 + static_cast<uint32_t>(c - '0');
  }
  return static_cast<int32_t>(number);
}

int32_t pidIn(OpenFile& file) {
  const std::optional<int64_t> size = file.size();
  if (!size || *size < 1) return -1;
  std::array<char, kPidTextLength> text;
  const std::size_t length = std::min(static_cast<std::size_t>(*size), text.size());
  if (file.read(text.data(), length) != length) return -1;
  return leadingDecimal({text.data(), length});
}

// Lets the disabled controls be drawn and pending events be handled, with the timer's refreshes held off.
void pumpRunLoop(NVKServerPrefs& pane) {
  pane.m_trackState = false;
  for (int i = 0; i < kRunLoopPasses; ++i) {
    platform().runLoop.runOnceInDefaultMode();
    platform().posix.usleep(kRunLoopPassMicroseconds);
  }
  pane.m_trackState = true;
}

void showProgress(NVKServerPrefs& pane, std::string_view text) {
  pane.ib_admin_label_svrState.setStringValue(text);
  platform().drawing.display(pane.ib_admin_label_svrState);
}

void countDot(NVKServerPrefs& pane) {
  showProgress(pane, pane.ib_admin_label_svrState.stringValue() + ".");
  platform().posix.usleep(kDotMicroseconds);
}

void waitUntil(NVKServerPrefs& pane, bool running) {
  for (int i = 0; i < kWaitingDots && (nvkd_pid() != -1) != running; ++i) countDot(pane);
  for (int i = 0; i < kSettlingDots; ++i) countDot(pane);
}

}  // namespace

int32_t nvkd_pid() {
  int32_t pid = -1;
  {
    OpenFile file(kPidFile, FileMode::readBinary);
    if (!file.isOpen()) return -1;
    pid = pidIn(file);
  }
  // A daemon of another user may not be signalled, but it is there.
  return platform().posix.kill(pid, Signal::none) == KillResult::noSuchProcess ? -1 : pid;
}

void NVKServerPrefs::beginServerChange(std::string_view text) {
  serverIsChanging_ = true;
  m_serverPid = nvkd_pid();
  showProgress(*this, text);
  enableGui(false, true);
  pumpRunLoop(*this);
  m_serverPid = 0;  // unknown, so that the next refresh rewrites every text
}

bool NVKServerPrefs::startServer() {
  if (!authorized()) return false;
  beginServerChange("Starting...");
  if (!runTool(kStartServer)) {
    logFailure("Norvik[E]: Could not start the server.");
    return false;
  }
  waitUntil(*this, true);
  return nvkd_pid() != -1;
}

bool NVKServerPrefs::stopServer() {
  if (!authorized()) return false;
  if (nvkd_pid() == -1) return true;
  beginServerChange("Stopping...");
  runTool(kStopServer);
  waitUntil(*this, false);
  return nvkd_pid() == -1;
}

// Starting may take longer than is watched here, so the result says nothing about it.
bool NVKServerPrefs::restartServer() {
  if (!authorized()) return false;
  if (stopServer()) startServer();
  return true;
}

bool NVKServerPrefs::runDispManager() {
  const bool launched = runTool(kManageDisplays);
  if (!launched && authorized()) logFailure("Norvik[E]: Could not launch display-manager.");
  return launched;
}

bool NVKServerPrefs::runAccessManager() {
  const bool launched = runTool(kManageAccess);
  if (!launched && authorized()) logFailure("Norvik[E]: Could not launch access-manager.");
  return launched;
}

}  // namespace norvik
