// Names of copies and the time of day as text.
#include "src/adapters/services/kept_copies.h"

#include <array>

namespace norvik {

std::optional<std::string> keptCopyPath(const std::string& folder, const std::string& path) {
  const bool leadsElsewhere = (path + '/').find("/../") != std::string::npos;
  if (folder.empty() || !path.starts_with('/') || leadsElsewhere) return std::nullopt;
  return folder + path;
}

std::string setAsidePath(const std::string& path, int number) {
  return path + ".damaged" + (number > 1 ? '.' + std::to_string(number) : "");
}

std::string rfc3339(std::time_t time) {
  std::tm parts{};
  std::array<char, 32> text{};
  const std::size_t length =
      std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", gmtime_r(&time, &parts));
  return {text.data(), length};
}

}  // namespace norvik
