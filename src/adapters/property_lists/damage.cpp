// The words for damage, and the lines where it is.
#include <algorithm>

#include "src/adapters/property_lists/formats.h"
#include "src/server/mac/text/escape.h"

namespace norvik {

std::string PropertyListDamage::sentence() const {
  return line > 0 ? "line " + std::to_string(line) + ": " + what : what;
}

std::nullopt_t DamageNote::set(std::string_view rest, std::string_view what) {
  if (report_.what.empty()) report_ = {lineOf(rest), std::string(what)};
  return std::nullopt;
}

// A carriage return is a line end where no line feed follows it.
int DamageNote::lineOf(std::string_view rest) const {
  const std::string_view before = whole_.substr(0, whole_.size() - rest.size());
  int line = 1;
  for (std::size_t i = 0; i < before.size(); ++i)
    if (before[i] == '\n' || (before[i] == '\r' && !whole_.substr(i + 1).starts_with('\n'))) ++line;
  return line;
}

std::string shown(std::string_view text) {
  constexpr std::size_t kLongest = 24;
  if (text.starts_with('\0')) return "a zero byte";
  return quoted(text.substr(0, kLongest)) + (text.size() > kLongest ? "..." : "");
}

std::string begunIn(int line) {
  return ", which begins in line " + std::to_string(line);
}

}  // namespace norvik
