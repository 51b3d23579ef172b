// One value for every path.
#include "src/frontends/shared/edits/fixed_lists.h"

#include <utility>

namespace norvik {

FixedLists::FixedLists(PropertyListFiles& lists, std::optional<PropertyList> content)
    : lists_(lists), content_(std::move(content)) {}

std::optional<PropertyList> FixedLists::dictionaryWithContentsOfFile(const std::string& /*path*/) {
  return content_;
}

bool FixedLists::writeToFile(const PropertyList& /*dictionary*/, const std::string& /*path*/) {
  return false;
}

std::string FixedLists::stringByExpandingTildeInPath(std::string_view path) {
  return lists_.stringByExpandingTildeInPath(path);
}

Platform platformWith(Platform& computer, PropertyListFiles& lists) {
  return {computer.application,    computer.alerts,  computer.workspace,
          computer.notifications,  computer.drawing, computer.runLoop,
          computer.authorization,  computer.files,   lists,
          computer.processManager, computer.posix,   computer.host,
          computer.systemVersion,  computer.bundles, computer.log,
          computer.assertions};
}

}  // namespace norvik
