// Calls the pane when somebody else has changed a settings file, in the way of the computer that it runs on.
// Only in the run loop's default mode, so never while a panel is open or the pane waits. A plain C++ header.
// Main thread only.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace norvik::prefpane {

class SettingsWatch {
 public:
  // Watches files at their paths on the disk, whether they are there or not.
  SettingsWatch(std::vector<std::string> paths, std::function<void()> changed);
  ~SettingsWatch();
  SettingsWatch(const SettingsWatch&) = delete;
  SettingsWatch& operator=(const SettingsWatch&) = delete;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace norvik::prefpane
