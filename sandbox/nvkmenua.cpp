// Stand-in for the menu agent: reads and logs its settings when it starts and when the notification about
// them is posted on the sandbox's bus.
#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>

#include <stdexcept>
#include <system_error>

#include "sandbox/daemon.h"
#include "sandbox/program.h"
#include "sandbox/settings.h"
#include "src/server/mac/text/trim.h"

namespace norvik::sandbox {
namespace {

constexpr const char* kFile = "/Library/Preferences/com.veltrane.nvkmenua.plist";
constexpr Setting kSettings[] = {
    {"NvkNotificationShowNews", Setting::Kind::boolean, 1},
    {"NvkNotificationShowNotices", Setting::Kind::boolean, 1},
    {"NvkNotificationShowUpdates", Setting::Kind::boolean, 1},
    {"NvkNotificationShowWarnings", Setting::Kind::boolean, 1},
    {"NvkNotificationShowLowPriority", Setting::Kind::boolean, 1},
    {"NvkNotificationShowMediumPriority", Setting::Kind::boolean, 1},
    {"NvkNotificationShowHighPriority", Setting::Kind::boolean, 1},
    {"NvkNotificationRepeatTimeout", Setting::Kind::integer, 3},
    {"NvkNotificationCloseTimeout", Setting::Kind::integer, 2},
    {"NvkNotificationShowTimeout", Setting::Kind::integer, 3},
};

// A distributed notification on the bus: the same signal for all, with the name as its first argument.
constexpr const char* kPath = "/com/veltrane/norvik/DistributedNotification";
constexpr const char* kInterface = "com.veltrane.norvik.DistributedNotification";
constexpr const char* kMember = "Posted";
constexpr std::string_view kUpdate = "NvkMunuUpdateSettingsNotification";

void logSettings(const Root& root, const std::string& why) {
  const PropertyList list = readSettings(root, std::string(kHome) + kFile);
  logLine(root, "menua", why + ": " + describeSettings(list, kSettings));
}

int posted(sd_bus_message* message, void* root, sd_bus_error*) {
  const char *name = nullptr, *object = nullptr;
  uint32_t options = 0;
  if (sd_bus_message_read(message, "ssu", &name, &object, &options) < 0) return 0;
  if (name == kUpdate) logSettings(*static_cast<const Root*>(root), name);
  return 0;
}

// Negative results are error numbers.
void check(int result, const char* what) {
  if (result < 0) throw std::system_error(-result, std::generic_category(), what);
}

int run(const Root& root, const Arguments& arguments) {
  if (!arguments.empty()) return usage("nvkmenua");
  blockSignals({SIGTERM, SIGINT});
  Daemon daemon;
  const auto address = readFile(root.own("bus"));
  if (!address) throw std::runtime_error("the sandbox has no bus");
  // Both live as long as the process does.
  sd_event* loop = nullptr;
  sd_bus* bus = nullptr;
  check(sd_event_new(&loop), "event loop");
  check(sd_bus_new(&bus), "bus");
  check(sd_bus_set_address(bus, std::string(trimmed(*address, kBlanks)).c_str()), "bus address");
  check(sd_bus_set_bus_client(bus, 1), "bus");
  check(sd_bus_start(bus), "bus");
  Root copy = root;
  check(sd_bus_match_signal(bus, nullptr, nullptr, kPath, kInterface, kMember, posted, &copy), "bus match");
  check(sd_bus_set_exit_on_disconnect(bus, 1), "bus");
  check(sd_bus_attach_event(bus, loop, SD_EVENT_PRIORITY_NORMAL), "bus");
  for (const int signal : {SIGTERM, SIGINT})
    check(sd_event_add_signal(loop, nullptr, signal, nullptr, nullptr), "signal");
  logSettings(root, "started");
  daemon.ready();
  sd_event_loop(loop);
  logLine(root, "menua", "ends");
  sd_bus_flush_close_unref(bus);
  sd_event_unref(loop);
  return 0;
}

}  // namespace
}  // namespace norvik::sandbox

int main(int argc, char** argv) {
  return norvik::sandbox::runProgram(argc, argv, norvik::sandbox::run);
}
