// Paths in the user's home folder.
#pragma once

#include <string>
#include <string_view>

namespace norvik {

// `path` with a leading "~", alone or before a "/", replaced by `home`; any other path as it is.
inline std::string withHome(std::string_view path, const std::string& home) {
  const bool isOwnHome = path == "~" || path.starts_with("~/");
  return isOwnHome ? home + std::string(path.substr(1)) : std::string(path);
}

}  // namespace norvik
