// Stand-in for the user agent: reads and logs its settings when it starts and on SIGUSR2.
#include "sandbox/daemon.h"
#include "sandbox/program.h"
#include "sandbox/settings.h"

namespace norvik::sandbox {
namespace {

constexpr const char* kFile = "/Library/Preferences/com.veltrane.nvkagent.plist";
constexpr Setting kSettings[] = {
    {"ImageUseDefaults", Setting::Kind::boolean, 1}, {"ImageQualityMode", Setting::Kind::integer, 2},
    {"ImageColorDepth", Setting::Kind::integer, 6},  {"ImageCaptPriority", Setting::Kind::integer, 3},
    {"ImageCaptBuffer", Setting::Kind::integer, 3},  {"ImageShadowSize", Setting::Kind::integer, 4},
    {"SwapMouseButtons", Setting::Kind::boolean, 0},
};

void logSettings(const Root& root, const std::string& why) {
  const PropertyList list = readSettings(root, std::string(kHome) + kFile);
  logLine(root, "agent", why + ": " + describeSettings(list, kSettings));
}

int run(const Root& root, const Arguments& arguments) {
  if (!arguments.empty()) return usage("nvkagent");
  sigset_t signals = blockSignals({SIGUSR2, SIGTERM, SIGINT});
  Daemon daemon;
  logSettings(root, "started");
  daemon.ready();
  int signal = 0;
  while (sigwait(&signals, &signal) == 0 && signal == SIGUSR2) logSettings(root, "SIGUSR2");
  logLine(root, "agent", "ends");
  return 0;
}

}  // namespace
}  // namespace norvik::sandbox

int main(int argc, char** argv) {
  return norvik::sandbox::runProgram(argc, argv, norvik::sandbox::run);
}
