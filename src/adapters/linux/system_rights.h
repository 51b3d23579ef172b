// Administrator rights on this system, put together: the bus, who runs the lines, and who decides.
#pragma once

#include <functional>
#include <memory>

#include "src/adapters/linux/helper_client.h"
#include "src/adapters/linux/polkit_authorization.h"
#include "src/adapters/linux/tool_launcher.h"

namespace norvik {

class SystemRights {
 public:
  // The super-user works directly, everybody else through the helper. `tools` is borrowed. `whileAsking` is
  // called again and again while somebody is asked, and may be none.
  SystemRights(ToolLauncher& tools, PolkitAuthorization::Options options, std::function<void()> whileAsking);

  PolkitAuthorization& authorization() { return *authorization_; }
  const PolkitAuthorization& authorization() const { return *authorization_; }
  LaunchedTools& lines() { return *lines_; }

 private:
  SystemBus bus_;
  std::unique_ptr<PrivilegedLines> lines_;
  std::unique_ptr<PolkitAuthorization> authorization_;
};

}  // namespace norvik
