// The preview of a page's image settings: its values, taken from the controls with what is pending, and its
// words.
#pragma once

#include <string>
#include <string_view>

#include "src/frontends/shared/language/language.h"
#include "src/frontends/shared/preview/sample_screen.h"
#include "src/server/mac/pane/pane.h"

namespace norvik {

namespace preview_texts {

inline constexpr std::string_view kTitle = english("Preview");
inline constexpr std::string_view kNote = english("What quality, colours and shadow do to a sample screen.");

}  // namespace preview_texts

// The values of the page's controls.
SampleSettings previewSettings(NVKServerPrefs& pane, const PreviewDescription& preview);

// What the picture shows, for a person who does not see it: "Sample screen with image quality High, colour
// depth 6 of 8, thousands of colours, and shadow size 4 of 72, thin."
std::string previewName(NVKServerPrefs& pane, const InterfaceDescription& interface,
                        const PreviewDescription& preview);

}  // namespace norvik
