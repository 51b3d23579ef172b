// On Linux the system reports what happens in the files' folders.
#include <utility>

#include "src/adapters/linux/file_watch.h"
#include "src/frontends/prefpane/run_loop_sources.h"
#include "src/frontends/prefpane/settings_watch.h"

namespace norvik::prefpane {

struct SettingsWatch::Parts {
  LinuxFileWatch files;
  std::function<void()> changed;
  DescriptorWatch descriptor;

  Parts(std::vector<std::string> paths, std::function<void()> call)
      : files(std::move(paths)), changed(std::move(call)), descriptor(files.descriptor(), [this] {
          if (files.takeChanges()) changed();
        }) {}
};

SettingsWatch::SettingsWatch(std::vector<std::string> paths, std::function<void()> changed)
    : parts_(std::make_unique<Parts>(std::move(paths), std::move(changed))) {}

SettingsWatch::~SettingsWatch() = default;

}  // namespace norvik::prefpane
