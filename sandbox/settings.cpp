// Settings files.
#include "sandbox/settings.h"

#include "src/adapters/property_lists/codec.h"
#include "src/server/mac/text/join.h"

namespace norvik::sandbox {

PropertyList readSettings(const Root& root, std::string_view path) {
  const auto bytes = readFile(root.inside(path));
  auto list = bytes ? decodePropertyList(*bytes) : std::nullopt;
  if (!list || !list->as<PropertyList::Dictionary>()) return {};
  return std::move(*list);
}

std::string describeSettings(const PropertyList& list, std::span<const Setting> settings) {
  std::vector<std::string> words;
  for (const Setting& setting : settings) {
    const PropertyList* stored = list.find(setting.key);
    const bool isBoolean = setting.kind == Setting::Kind::boolean;
    const int32_t value = !stored     ? setting.byDefault
                          : isBoolean ? (boolValue(stored) ? 1 : 0)
                                      : intValue(stored);
    words.push_back(setting.key + std::string("=") +
                    (isBoolean ? (value ? "true" : "false") : std::to_string(value)));
  }
  return joined(words, " ");
}

}  // namespace norvik::sandbox
