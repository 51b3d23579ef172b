// On the Mac the files are looked at each second: what the system reports of files goes through a service of
// its own and a thread, and these are five.
#include <utility>

#include "src/adapters/posix/polled_files.h"
#include "src/frontends/prefpane/run_loop_sources.h"
#include "src/frontends/prefpane/settings_watch.h"

namespace norvik::prefpane {

namespace {

constexpr double kLook = 1;  // seconds from one look to the next

}  // namespace

struct SettingsWatch::Parts {
  PolledFiles files;
  std::function<void()> changed;
  Delay next;

  Parts(std::vector<std::string> paths, std::function<void()> call)
      : files(std::move(paths)), changed(std::move(call)), next([this] { look(); }) {
    next.start(kLook);
  }

  void look() {
    next.start(kLook);
    if (files.takeChanges()) changed();
  }
};

SettingsWatch::SettingsWatch(std::vector<std::string> paths, std::function<void()> changed)
    : parts_(std::make_unique<Parts>(std::move(paths), std::move(changed))) {}

SettingsWatch::~SettingsWatch() = default;

}  // namespace norvik::prefpane
