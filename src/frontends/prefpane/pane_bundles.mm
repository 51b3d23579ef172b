// The pane's own Info dictionary and files, read by the toolkit; everything else is passed on.
//
// The pane's bundle keeps the computer's reference, by which the computer knows it.
#include "src/frontends/prefpane/pane_bundles.h"

#import "src/frontends/prefpane/appkit.h"
#include "src/frontends/prefpane/text.h"

namespace norvik::prefpane {

void PaneBundles::setPaneBundle(void* bundle) {
  [static_cast<NSBundle*>(bundle) retain];
  [static_cast<NSBundle*>(bundle_) release];
  bundle_ = bundle;
}

CFBundleRef PaneBundles::CFBundleGetMainBundle() {
  return computer_.CFBundleGetMainBundle();
}

CFBundleRef PaneBundles::CFBundleGetBundleWithIdentifier(std::string_view identifier) {
  if (CFBundleGetValueForInfoDictionaryKey(paneBundle(), "CFBundleIdentifier") == identifier)
    return paneBundle();
  const CFBundleRef found = computer_.CFBundleGetBundleWithIdentifier(identifier);
  return found != paneBundle() ? found : nullptr;
}

CFBundleRef PaneBundles::paneBundle() {
  return computer_.paneBundle();
}

std::optional<std::string> PaneBundles::CFBundleGetValueForInfoDictionaryKey(CFBundleRef bundle,
                                                                             std::string_view key) {
  if (bundle != paneBundle() || bundle_ == nullptr)
    return computer_.CFBundleGetValueForInfoDictionaryKey(bundle, key);
  const id value = [static_cast<NSBundle*>(bundle_) objectForInfoDictionaryKey:text(key)];
  if (![value isKindOfClass:[NSString class]]) return std::nullopt;
  return utf8(value);
}

std::optional<std::string> PaneBundles::resource(CFBundleRef bundle, std::string_view name,
                                                 std::string_view type) {
  if (bundle == paneBundle() && bundle_ != nullptr) {
    NSString* file = [static_cast<NSBundle*>(bundle_) pathForResource:text(name) ofType:text(type)];
    NSData* bytes = file != nil ? [NSData dataWithContentsOfFile:file] : nil;
    if ([bytes length] > 0) return std::string(static_cast<const char*>([bytes bytes]), [bytes length]);
  }
  return computer_.resource(bundle, name, type);
}

}  // namespace norvik::prefpane
