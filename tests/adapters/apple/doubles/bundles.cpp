// The bundles that the process has loaded, borrowed by everybody.
#include <CoreFoundation/CoreFoundation.h>
#include <unistd.h>

#include "tests/adapters/apple/doubles/doubles.h"
#include "tests/adapters/apple/doubles/objects.h"

namespace norvik::doubles {

namespace {

struct Bundle : Object {
  explicit Bundle(std::string given) : Object(kBundle), identifier(std::move(given)) {}
  std::string identifier;  // empty for the main one
};

std::map<std::string, CFTypeRef> known;

// One object for each, as long as the computer.
CFBundleRef bundleNamed(const std::string& identifier) {
  CFTypeRef& bundle = known[identifier];
  if (bundle == nullptr) bundle = keepForGood(std::make_unique<Bundle>(identifier));
  return static_cast<CFBundleRef>(const_cast<void*>(bundle));
}

std::string wordOf(CFStringRef text) {
  const auto* word = live<Text>(text, kText, "a text");
  return word != nullptr ? word->utf8 : "";
}

const BundleKind* kindOf(CFBundleRef bundle) {
  const auto* asked = live<Bundle>(bundle, kBundle, "a bundle");
  if (asked == nullptr) return nullptr;
  const auto found = mac().bundles.find(asked->identifier);
  return found != mac().bundles.end() ? &found->second : nullptr;
}

}  // namespace

void forgetBundles() {
  known.clear();
}

}  // namespace norvik::doubles

using namespace norvik::doubles;

extern "C" {

CFBundleRef CFBundleGetMainBundle(void) {
  return bundleNamed("");
}

CFBundleRef CFBundleGetBundleWithIdentifier(CFStringRef bundleID) {
  const std::string wanted = wordOf(bundleID);
  return mac().bundles.count(wanted) > 0 ? bundleNamed(wanted) : nullptr;
}

// Numbers are numbers, which a text may not be made of; the texts live as long as the bundle.
CFTypeRef CFBundleGetValueForInfoDictionaryKey(CFBundleRef bundle, CFStringRef key) {
  const BundleKind* kind = kindOf(bundle);
  if (kind == nullptr) return nullptr;
  const std::string name = wordOf(key);
  if (name == "NVKNumber") return keepForGood(std::make_unique<Number>(false, 7, 7));
  const auto value = kind->info.find(name);
  return value != kind->info.end() ? keepForGood(std::make_unique<Text>(value->second)) : nullptr;
}

CFURLRef CFBundleCopyResourceURL(CFBundleRef bundle, CFStringRef resourceName, CFStringRef resourceType,
                                 CFStringRef subDirName) {
  const BundleKind* kind = kindOf(bundle);
  if (subDirName != nullptr) violate("a folder of resources that the rules do not name");
  if (kind == nullptr || kind->resources.empty()) return nullptr;
  const std::string path = kind->resources + "/" + wordOf(resourceName) + "." + wordOf(resourceType);
  if (::access(path.c_str(), F_OK) != 0) return nullptr;
  return static_cast<CFURLRef>(keep(std::make_unique<Address>(path)));
}

}  // extern "C"
