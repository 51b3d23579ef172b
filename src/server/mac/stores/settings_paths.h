// Where the settings that are no one tool's are kept; those that tools install are in
// control/tool_commands.h.
#pragma once

namespace norvik {

// Property lists of the user; the tilde is the home folder.
inline constexpr const char* kAgentFile = "~/Library/Preferences/com.veltrane.nvkagent.plist";
inline constexpr const char* kMenuAgentFile = "~/Library/Preferences/com.veltrane.nvkmenua.plist";

// Property lists of the operating system.
inline constexpr const char* kScreenSaverFile = "/Library/Preferences/com.apple.screensaver.plist";
inline constexpr const char* kWindowServerFile = "/Library/Preferences/com.apple.windowserver.plist";

}  // namespace norvik
