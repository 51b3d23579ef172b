// Finds pages and settings by what a person types: over labels, help texts, names on the command line, what
// can be chosen, synonyms and present values. Reads only the description and what it is given; knows no
// toolkit.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "src/frontends/shared/interface/setting_description.h"

namespace norvik {

struct SearchHit {
  PageName page;
  std::string name;    // of the setting, "rdp.port"; empty for a page itself
  std::string label;   // what a person reads: "Port number."; of a page, its title
  std::string outlet;  // of the control to show; empty for a page
};

// The value of a setting as a person reads it; nothing for one that the pane does not show, which is then not
// found.
using ValueOf = std::function<std::optional<std::string>(const std::string& setting)>;

// Every word must be found, as the beginning of some word or with one typing error; case does not count. The
// best come first: those whose label is found before those whose help text is, and pages before settings
// that are found as well; else in the order of the pages. None for a text without letters and digits.
std::vector<SearchHit> findSettings(const InterfaceDescription& interface, std::string_view text,
                                    const ValueOf& valueOf);

}  // namespace norvik
