// The controls' values and words.
#include "src/frontends/shared/preview/preview_texts.h"

#include "src/frontends/shared/interface/value_words.h"
#include "src/frontends/shared/language/language.h"

namespace norvik {

namespace {

std::string spoken(NVKServerPrefs& pane, const InterfaceDescription& interface, const std::string& outlet) {
  return spokenValue(*interface.find(outlet), pane.outlet(outlet)->truncatedValue());
}

}  // namespace

SampleSettings previewSettings(NVKServerPrefs& pane, const PreviewDescription& preview) {
  return {static_cast<int>(pane.outlet(preview.quality)->indexOfSelectedItem()),
          static_cast<int>(pane.outlet(preview.depth)->truncatedValue()),
          static_cast<int>(pane.outlet(preview.shadow)->truncatedValue())};
}

std::string previewName(NVKServerPrefs& pane, const InterfaceDescription& interface,
                        const PreviewDescription& preview) {
  const auto& items = interface.find(preview.quality)->items;
  const auto chosen = static_cast<std::size_t>(pane.outlet(preview.quality)->indexOfSelectedItem());
  return sentence("Sample screen with image quality {1}, colour depth {2}, and shadow size {3}.",
                  {chosen < items.size() ? translated(items[chosen]) : "",
                   spoken(pane, interface, preview.depth), spoken(pane, interface, preview.shadow)});
}

}  // namespace norvik
