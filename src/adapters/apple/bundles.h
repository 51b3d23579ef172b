// The bundles that the process has loaded.
#pragma once

#include <string>

#include "src/server/mac/platform/system_version.h"

namespace norvik {

class AppleBundles : public Bundles {
 public:
  // `paneIdentifier` names the bundle that the pane was loaded from.
  explicit AppleBundles(std::string paneIdentifier) : paneIdentifier_(std::move(paneIdentifier)) {}

  // Never null: a program without a bundle has one of its folder.
  CFBundleRef CFBundleGetMainBundle() override;
  // Finds only bundles that this process has made an object of.
  CFBundleRef CFBundleGetBundleWithIdentifier(std::string_view identifier) override;
  CFBundleRef paneBundle() override;
  // A value that is no text counts as missing.
  std::optional<std::string> CFBundleGetValueForInfoDictionaryKey(CFBundleRef bundle,
                                                                  std::string_view key) override;
  std::optional<std::string> resource(CFBundleRef bundle, std::string_view name,
                                      std::string_view type) override;

 private:
  std::string paneIdentifier_;
};

}  // namespace norvik
