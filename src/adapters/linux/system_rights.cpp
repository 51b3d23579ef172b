// The choice between the helper on the bus and the helper's program.
#include "src/adapters/linux/system_rights.h"

#include <utility>

#include "src/adapters/linux/direct_lines.h"

namespace norvik {

SystemRights::SystemRights(ToolLauncher& tools, PolkitAuthorization::Options options,
                           std::function<void()> whileAsking)
    : bus_(std::move(whileAsking)) {
  if (options.isSuperUser) {
    lines_ = std::make_unique<DirectLines>(tools);
  } else {
    lines_ = std::make_unique<HelperClient>(bus_, [&tools] { return tools.heldOpen(); });
  }
  authorization_ = std::make_unique<PolkitAuthorization>(bus_, *lines_, options);
}

}  // namespace norvik
