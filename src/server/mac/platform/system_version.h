// Platform interfaces to the version of the operating system and to the bundles that programs are shipped in.
// May be called on any thread; does not block.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "src/server/mac/platform/processes.h"

namespace norvik {

inline constexpr OSErr gestaltUndefSelectorErr = -5551;

class SystemVersion {
 public:
  virtual ~SystemVersion() = default;

  // Stores the value of a selector, among them 'sys1', 'sys2' and 'sys3' for the major, minor and bug-fix
  // version of the system. On an error nothing is stored.
  virtual OSErr Gestalt(OSType selector, int32_t& response) = 0;
};

// A loaded bundle as the adapter knows it; opaque to the pane, never owned by it. Null is none.
using CFBundleRef = const struct BundleOpaque*;

class Bundles {
 public:
  virtual ~Bundles() = default;

  // The bundle of the application that hosts the pane. Never null: a program without a bundle has one of its
  // folder, without an Info dictionary.
  virtual CFBundleRef CFBundleGetMainBundle() = 0;
  // The bundle with that identifier; null if none is known, as on the Mac every one is that the process has
  // not loaded.
  virtual CFBundleRef CFBundleGetBundleWithIdentifier(std::string_view identifier) = 0;
  // The bundle that the pane itself was loaded from; null if it has none.
  virtual CFBundleRef paneBundle() = 0;

  // The text of a key of the bundle's Info dictionary; nothing if the bundle has no such dictionary or key.
  virtual std::optional<std::string> CFBundleGetValueForInfoDictionaryKey(CFBundleRef bundle,
                                                                          std::string_view key) = 0;
  // The bytes of a resource of the bundle, such as ("authlock", "tiff"); nothing if it has none of that name.
  virtual std::optional<std::string> resource(CFBundleRef bundle, std::string_view name,
                                              std::string_view type) = 0;
};

}  // namespace norvik
