// The bundles interface of the pane in its host: the pane's bundle is the one that the host loaded
// it from, all others are the computer's. A plain C++ header. May be called on any thread, apart from
// setPaneBundle; does not block.
#pragma once

#include "src/server/mac/platform/system_version.h"

namespace norvik::prefpane {

class PaneBundles : public Bundles {
 public:
  // The computer's bundles outlive this. Until setPaneBundle is called the pane's bundle is the computer's.
  explicit PaneBundles(Bundles& computer) : computer_(computer) {}

  // The NSBundle that the host made a pane with. Keeps it until another is set, or else for the life of the
  // process. Main thread only.
  void setPaneBundle(void* bundle);

  CFBundleRef CFBundleGetMainBundle() override;
  // The pane's bundle is found by the identifier in its own Info dictionary.
  CFBundleRef CFBundleGetBundleWithIdentifier(std::string_view identifier) override;
  CFBundleRef paneBundle() override;
  // The pane's bundle has the Info dictionary of its folder, which a seller may have changed; a value that is
  // not a string counts as missing.
  std::optional<std::string> CFBundleGetValueForInfoDictionaryKey(CFBundleRef bundle,
                                                                  std::string_view key) override;
  // The pane's bundle has the files of its folder. What is missing there is built in, so that a damaged
  // folder cannot take the pictures away.
  std::optional<std::string> resource(CFBundleRef bundle, std::string_view name,
                                      std::string_view type) override;

 private:
  Bundles& computer_;
  void* bundle_ = nullptr;  // no Handle: at the end of the process it is too late to release a bundle
};

}  // namespace norvik::prefpane
