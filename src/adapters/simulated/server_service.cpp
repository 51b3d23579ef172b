// Launches take effect after a number of sleeps; the pid file shows whether the daemon runs.
#include "src/adapters/simulated/server_service.h"

#include <algorithm>
#include <cctype>

#include "src/server/mac/control/tool_commands.h"
#include "src/server/mac/platform/property_list.h"
#include "src/server/mac/text/trim.h"

namespace norvik {

namespace {

constexpr std::string_view kPidFile = "/var/run/nvkserverd.pid";
constexpr std::size_t kPidTextLength = 31;
constexpr uint32_t kSecond = 1'000'000;

}  // namespace

ServerService::ServerService(FileSystem& fileSystem, ProcessTable& processes, SimulatedClock& clock)
    : fileSystem_(fileSystem), processes_(processes) {
  fileSystem_.put(PROC_NVKSVC, "the tool");
  clock.addSleepListener([this](uint32_t microseconds) { slept(microseconds); });
}

// As readers of the file interpret it: digits at the beginning of its first 31 bytes, of which the low 32
// bits count, and 0 without digits; nothing for an empty file.
std::optional<int32_t> ServerService::pidInFile() const {
  const auto file = fileSystem_.find(kPidFile);
  if (file == nullptr || file->bytes.empty()) return std::nullopt;
  const std::string_view text = std::string_view(file->bytes).substr(0, kPidTextLength);
  const std::string_view digits = withoutLeading(text, kCSpace);
  const bool isNumber = !digits.empty() && std::isdigit(static_cast<unsigned char>(digits.front()));
  return isNumber ? static_cast<int32_t>(leadingInteger(text)) : 0;
}

std::optional<int32_t> ServerService::runningPid() const {
  const auto pid = pidInFile();
  return pid && processes_.exists(*pid) ? pid : std::nullopt;
}

void ServerService::setDaemon(std::optional<int32_t> pid) {
  if (!pid) return take(Change::down);
  fileSystem_.put(kPidFile, std::to_string(*pid) + '\n');
  processes_.setState(*pid, ProcessTable::State::alive);
}

void ServerService::take(Change change) {
  if (change == Change::up) {
    if (daemonRuns()) return;
    ++settingsReads_;
    // The daemon runs even if there is no folder for its pid file.
    if (const auto file = fileSystem_.create(kPidFile, FileSystem::kRoot)) {
      file->bytes = std::to_string(startedPid_) + '\n';
    }
    processes_.setState(startedPid_, ProcessTable::State::alive);
    return;
  }
  if (const auto pid = pidInFile()) processes_.forget(*pid);
  fileSystem_.remove(kPidFile);
}

void ServerService::run(const std::vector<std::string>& arguments) {
  if (arguments.empty()) return;
  if (arguments[0] == "start" && !daemonRuns()) schedule(Change::up, startDelay_);
  if (arguments[0] == "apply" && daemonRuns()) ++settingsReads_;
  if (arguments[0] == "stop") schedule(Change::down, stopDelay_);
}

void ServerService::schedule(Change change, std::optional<int64_t> sleeps) {
  if (!sleeps) return;
  if (*sleeps == 0) return take(change);
  pending_.push_back({change, *sleeps});
}

void ServerService::slept(uint32_t microseconds) {
  if (microseconds != kSecond) return;
  for (Pending& pending : pending_) {
    if (--pending.sleeps == 0) take(pending.change);
  }
  std::erase_if(pending_, [](const Pending& pending) { return pending.sleeps == 0; });
}

}  // namespace norvik
