// Every property list of a computer replaced by one value, so that a pane, or a check, sees that instead of
// the files.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "src/server/mac/platform/platform.h"

namespace norvik {

class FixedLists : public PropertyListFiles {
 public:
  // Every path holds `content`; nothing where there is none. Borrows `lists`, which knows the home folder.
  FixedLists(PropertyListFiles& lists, std::optional<PropertyList> content);

  std::optional<PropertyList> dictionaryWithContentsOfFile(const std::string& path) override;
  // Always false: nothing is written.
  bool writeToFile(const PropertyList& dictionary, const std::string& path) override;
  std::string stringByExpandingTildeInPath(std::string_view path) override;

 private:
  PropertyListFiles& lists_;
  std::optional<PropertyList> content_;
};

// The computer with these lists in the place of its own. Borrows all.
Platform platformWith(Platform& computer, PropertyListFiles& lists);

}  // namespace norvik
