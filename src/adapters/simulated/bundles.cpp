// Info dictionaries as a test has set them; resources as shipped.
#include "src/adapters/simulated/bundles.h"

#include "resources/resources.h"

namespace norvik {

namespace {

template <typename Bundle>
CFBundleRef refOf(const Bundle& bundle) {
  return reinterpret_cast<CFBundleRef>(&bundle);
}

}  // namespace

void SimulatedBundles::setBundle(const std::string& identifier, Info info) {
  others_[identifier].info = std::move(info);
}

void SimulatedBundles::setPaneInfo(const std::string& key, const std::string& value) {
  if (!pane_.info) pane_.info.emplace();
  pane_.info->insert_or_assign(key, value);
}

void SimulatedBundles::setResourceMissing(const std::string& name, bool missing) {
  if (missing) {
    missingResources_.insert(name);
  } else {
    missingResources_.erase(name);
  }
}

CFBundleRef SimulatedBundles::CFBundleGetMainBundle() {
  return refOf(main_);
}

CFBundleRef SimulatedBundles::CFBundleGetBundleWithIdentifier(std::string_view identifier) {
  const auto found = others_.find(identifier);
  return found == others_.end() ? nullptr : refOf(found->second);
}

CFBundleRef SimulatedBundles::paneBundle() {
  return refOf(pane_);
}

std::optional<std::string> SimulatedBundles::CFBundleGetValueForInfoDictionaryKey(CFBundleRef bundle,
                                                                                  std::string_view key) {
  if (bundle == nullptr) return std::nullopt;
  const auto& info = reinterpret_cast<const Bundle*>(bundle)->info;
  if (!info) return std::nullopt;
  const auto value = info->find(key);
  if (value == info->end()) return std::nullopt;
  return value->second;
}

std::optional<std::string> SimulatedBundles::resource(CFBundleRef bundle, std::string_view name,
                                                      std::string_view type) {
  if (bundle != paneBundle() || missingResources_.contains(name)) return std::nullopt;
  const auto bytes = resourceFile(name, type);
  return bytes ? std::optional<std::string>(*bytes) : std::nullopt;
}

}  // namespace norvik
