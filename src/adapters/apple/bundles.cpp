// Bundles are borrowed by the Get rule and live as long as the process.
#include "src/adapters/apple/bundles.h"

#include <CoreFoundation/CoreFoundation.h>

#include "src/adapters/apple/core_text.h"
#include "src/adapters/posix/descriptors.h"

namespace norvik {

namespace {

constexpr std::size_t kLargestResource = std::size_t{64} << 20;

::CFBundleRef core(CFBundleRef bundle) {
  return reinterpret_cast<::CFBundleRef>(const_cast<BundleOpaque*>(bundle));
}

}  // namespace

CFBundleRef AppleBundles::CFBundleGetMainBundle() {
  return reinterpret_cast<CFBundleRef>(::CFBundleGetMainBundle());
}

CFBundleRef AppleBundles::CFBundleGetBundleWithIdentifier(std::string_view identifier) {
  const Owned<CFStringRef> wanted = coreText(identifier);
  return wanted ? reinterpret_cast<CFBundleRef>(::CFBundleGetBundleWithIdentifier(wanted.get())) : nullptr;
}

CFBundleRef AppleBundles::paneBundle() {
  return CFBundleGetBundleWithIdentifier(paneIdentifier_);
}

std::optional<std::string> AppleBundles::CFBundleGetValueForInfoDictionaryKey(CFBundleRef bundle,
                                                                              std::string_view key) {
  const Owned<CFStringRef> name = coreText(key);
  if (bundle == nullptr || !name) return std::nullopt;
  const CFTypeRef value = ::CFBundleGetValueForInfoDictionaryKey(core(bundle), name.get());
  if (value == nullptr || ::CFGetTypeID(value) != ::CFStringGetTypeID()) return std::nullopt;
  return utf8(static_cast<CFStringRef>(value));
}

std::optional<std::string> AppleBundles::resource(CFBundleRef bundle, std::string_view name,
                                                  std::string_view type) {
  const Owned<CFStringRef> file = coreText(name);
  const Owned<CFStringRef> extension = coreText(type);
  if (bundle == nullptr || !file || !extension) return std::nullopt;
  const Owned<CFURLRef> address(
      ::CFBundleCopyResourceURL(core(bundle), file.get(), extension.get(), nullptr));
  if (!address) return std::nullopt;
  return readRegularFile(fileSystemPath(address.get()), kLargestResource);
}

}  // namespace norvik
