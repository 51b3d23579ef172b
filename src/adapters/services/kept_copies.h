// How the copies of settings files, and the damaged files that are set aside, are named and dated on every
// computer. Computes names; touches no file.
#pragma once

#include <ctime>
#include <optional>
#include <string>

namespace norvik {

// How many damaged files are kept beside each other; more are a sign that nobody looks at them.
inline constexpr int kMostSetAside = 999;

// Where the copy of the file at `path` is in the folder of copies: below it at the same path, so that no two
// files share a copy. Nothing for a path that is not absolute, or that leads elsewhere by "..".
std::optional<std::string> keptCopyPath(const std::string& folder, const std::string& path);

// The name that the damaged file at `path` is given: PATH.damaged for 1, then PATH.damaged.2 and so on.
std::string setAsidePath(const std::string& path, int number);

// The time as in RFC 3339, UTC, in whole seconds: "2024-05-01T12:00:00Z".
std::string rfc3339(std::time_t time);

}  // namespace norvik
