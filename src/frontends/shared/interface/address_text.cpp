// Cuts the text at its blank line.
#include "src/frontends/shared/interface/address_text.h"

#include <string_view>

namespace norvik {

std::optional<std::string> addressIn(const std::string& text) {
  constexpr std::string_view kBlankLine = "\n\n";
  const std::size_t blank = text.find(kBlankLine);
  if (blank == std::string::npos) return std::nullopt;
  return text.substr(blank + kBlankLine.size());
}

}  // namespace norvik
