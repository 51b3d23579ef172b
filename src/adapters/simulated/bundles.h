// The bundles of the simulated computer: the pane's own, the host application's, and any others by
// identifier.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "src/server/mac/platform/system_version.h"

namespace norvik {

class SimulatedBundles : public Bundles {
 public:
  using Info = std::map<std::string, std::string, std::less<>>;

  // The bundle of the host application, or the one with that identifier, has this Info dictionary.
  void setMainBundle(Info info) { main_.info = std::move(info); }
  void setBundle(const std::string& identifier, Info info);
  // Sets a key of the pane bundle's Info dictionary, which is made if there is none.
  void setPaneInfo(const std::string& key, const std::string& value);
  void removePaneInfo() { pane_.info.reset(); }
  // Whether the pane bundle has the shipped resource of that name.
  void setResourceMissing(const std::string& name, bool missing);

  CFBundleRef CFBundleGetMainBundle() override;
  CFBundleRef CFBundleGetBundleWithIdentifier(std::string_view identifier) override;
  CFBundleRef paneBundle() override;
  std::optional<std::string> CFBundleGetValueForInfoDictionaryKey(CFBundleRef bundle,
                                                                  std::string_view key) override;
  std::optional<std::string> resource(CFBundleRef bundle, std::string_view name,
                                      std::string_view type) override;

 private:
  struct Bundle {
    std::optional<Info> info = Info{};
  };

  Bundle main_;
  Bundle pane_;
  std::map<std::string, Bundle, std::less<>> others_;
  std::set<std::string, std::less<>> missingResources_;
};

}  // namespace norvik
