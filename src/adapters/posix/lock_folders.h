// Where the lock for changes is, for those who take it and for the helper, which keeps it. No code.
#pragma once

namespace norvik {

// The first of these that exists is locked. It is the same folder for every user and every front end.
inline constexpr const char* kLockFolders[] = {"/etc/norvik", "/etc", "/"};

}  // namespace norvik
