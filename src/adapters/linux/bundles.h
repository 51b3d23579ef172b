// Bundles: the folders NAME.app, NAME.prefPane and NAME.bundle in given folders, the bundle of the running
// program, and the pane's own, which is built into the program.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include "src/adapters/posix/root_folder.h"
#include "src/server/mac/platform/system_version.h"

namespace norvik {

class LinuxBundles : public Bundles {
 public:
  // `folders` are the computer's paths, searched in this order.
  LinuxBundles(RootFolder root, std::vector<std::string> folders);
  ~LinuxBundles() override;

  CFBundleRef CFBundleGetMainBundle() override;
  CFBundleRef CFBundleGetBundleWithIdentifier(std::string_view identifier) override;
  CFBundleRef paneBundle() override;
  std::optional<std::string> CFBundleGetValueForInfoDictionaryKey(CFBundleRef bundle,
                                                                  std::string_view key) override;
  std::optional<std::string> resource(CFBundleRef bundle, std::string_view name,
                                      std::string_view type) override;

 private:
  struct Bundle;

  // The bundle in a folder on the disk; null if it has no Info dictionary. A loaded bundle is kept, with the
  // Info dictionary that it had then.
  const Bundle* load(const std::string& folder);

  RootFolder root_;
  std::vector<std::string> folders_;
  std::unique_ptr<const Bundle> pane_;
  std::mutex mutex_;                    // of what was loaded
  std::unique_ptr<const Bundle> main_;  // of a program outside of bundles
  std::map<std::string, std::unique_ptr<const Bundle>> loaded_;
};

}  // namespace norvik
