// Searches for bundles at each request, so that newly installed ones are found.
#include "src/adapters/linux/bundles.h"

#include <algorithm>
#include <filesystem>

#include "resources/resources.h"
#include "src/adapters/linux/bundle_folder.h"
#include "src/adapters/posix/descriptors.h"
#include "src/adapters/property_lists/codec.h"

namespace norvik {

namespace fs = std::filesystem;

struct LinuxBundles::Bundle {
  std::string folder;  // on the disk; empty for the pane's, whose files are built in
  PropertyList info;

  CFBundleRef ref() const { return reinterpret_cast<CFBundleRef>(this); }
  const std::string* infoText(std::string_view key) const {
    const PropertyList* value = info.find(key);
    return value != nullptr ? value->as<std::string>() : nullptr;
  }
};

namespace {

constexpr std::string_view kSuffixes[] = {".app", ".bundle", ".prefPane"};
constexpr std::size_t kLargestResource = std::size_t{64} << 20;

bool isBundleName(const std::string& name) {
  return std::any_of(std::begin(kSuffixes), std::end(kSuffixes),
                     [&](std::string_view suffix) { return name.ends_with(suffix); });
}

// Sorted by name, so that of two bundles with the same identifier always the same one is found.
std::vector<std::string> bundlesIn(const std::string& folder) {
  std::vector<std::string> found;
  std::error_code error;
  fs::directory_iterator entry(folder, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    if (isBundleName(entry->path().filename().string())) found.push_back(entry->path().string());
  }
  std::sort(found.begin(), found.end());
  return found;
}

}  // namespace

LinuxBundles::LinuxBundles(RootFolder root, std::vector<std::string> folders)
    : root_(std::move(root)),
      folders_(std::move(folders)),
      pane_(new Bundle{{}, decodePropertyList(infoPropertyList()).value_or(PropertyList())}) {}

LinuxBundles::~LinuxBundles() = default;

const LinuxBundles::Bundle* LinuxBundles::load(const std::string& folder) {
  const std::lock_guard lock(mutex_);
  const auto known = loaded_.find(folder);
  if (known != loaded_.end()) return known->second.get();
  std::optional<PropertyList> info = infoDictionary(folder);
  if (!info) return nullptr;
  return loaded_.emplace(folder, new Bundle{folder, std::move(*info)}).first->second.get();
}

CFBundleRef LinuxBundles::CFBundleGetMainBundle() {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  const std::string folder = applicationAbove(program.string());
  const Bundle* bundle = folder.empty() ? nullptr : load(folder);
  if (bundle != nullptr) return bundle->ref();
  const std::lock_guard lock(mutex_);
  if (!main_) main_.reset(new Bundle{program.parent_path().string(), PropertyList()});
  return main_->ref();
}

CFBundleRef LinuxBundles::CFBundleGetBundleWithIdentifier(std::string_view identifier) {
  const auto isWanted = [identifier](const Bundle* bundle) {
    const std::string* own = bundle != nullptr ? bundle->infoText("CFBundleIdentifier") : nullptr;
    return own != nullptr && *own == identifier;
  };
  if (isWanted(pane_.get())) return pane_->ref();
  for (const std::string& folder : folders_) {
    for (const std::string& path : bundlesIn(root_.onDisk(folder))) {
      const Bundle* bundle = load(path);
      if (isWanted(bundle)) return bundle->ref();
    }
  }
  return nullptr;
}

CFBundleRef LinuxBundles::paneBundle() {
  return pane_->ref();
}

std::optional<std::string> LinuxBundles::CFBundleGetValueForInfoDictionaryKey(CFBundleRef bundle,
                                                                              std::string_view key) {
  if (bundle == nullptr) return std::nullopt;
  const std::string* text = reinterpret_cast<const Bundle*>(bundle)->infoText(key);
  return text != nullptr ? std::optional(*text) : std::nullopt;
}

std::optional<std::string> LinuxBundles::resource(CFBundleRef bundle, std::string_view name,
                                                  std::string_view type) {
  if (bundle == nullptr) return std::nullopt;
  const std::string& folder = reinterpret_cast<const Bundle*>(bundle)->folder;
  if (!folder.empty()) {
    const std::string file = std::string(name) + "." + std::string(type);
    return readRegularFile(folder + "/Contents/Resources/" + file, kLargestResource);
  }
  const auto bytes = resourceFile(name, type);
  return bytes ? std::optional<std::string>(*bytes) : std::nullopt;
}

}  // namespace norvik
