// The tools that are run as the super-user, and every command line that they are run with. Nothing else is
// ever run with administrator rights.
#pragma once

namespace norvik {

inline constexpr const char* PROC_NVKSVC = "/usr/sbin/nvkservice";
inline constexpr const char* PROC_DEFAULTS = "/usr/bin/defaults";
inline constexpr const char* PROC_SYSMV = "/bin/mv";
inline constexpr const char* PROC_CHMOD = "/bin/chmod";
inline constexpr const char* PROC_CHOWN = "/usr/sbin/chown";
inline constexpr const char* PROC_SYSCTL = "/usr/sbin/sysctl";
inline constexpr const char* kRebootTool = "/sbin/reboot";

inline constexpr const char* kServerConfigFile = "/etc/norvik/svr.cfg";
inline constexpr const char* kLaunchdConfigFile = "/etc/launchd.conf";
// Names that the temporary files of the two are made from.
inline constexpr const char* kServerConfigTempName = "server.conf";
inline constexpr const char* kLaunchdConfigTempName = "launchd.conf";
// What a temporary file's path begins with, before its name, a dot and the process id.
inline constexpr const char* kTemporaryFolder = "/tmp";
inline constexpr const char* kTemporaryPrefix = "/norvik.prefs.tmp.";

// The placeholder in a command line for the one argument that is known only when it is run.
inline constexpr char kVariable[] = "VARIABLE";

inline constexpr int kMaxArguments = 10;

struct ToolCommand {
  const char* tool;
  const char* arguments[kMaxArguments];  // null if there are fewer
};

// clang-format off
inline constexpr ToolCommand kStopServer      {PROC_NVKSVC, {"stop", "-w"}};
inline constexpr ToolCommand kStartServer     {PROC_NVKSVC, {"start", "-f", "-w"}};
inline constexpr ToolCommand kManageDisplays  {PROC_NVKSVC, {"dspcmd", "manage"}};
inline constexpr ToolCommand kManageAccess    {PROC_NVKSVC, {"admcmd", "manage"}};
inline constexpr ToolCommand kApplyConfig     {PROC_NVKSVC, {"apply"}};
inline constexpr ToolCommand kReboot          {kRebootTool, {}};
// Tile size of the window server's hardware compositing: "0" switches it off, "256" on.
inline constexpr ToolCommand kSetTileSize     {PROC_DEFAULTS, {"write", "/Library/Preferences/com.apple.windowserver",
                                               "GLCompositor", "-dict", "tileHeight", "-int", kVariable,
                                               "tileWidth", "-int", kVariable}};
// Seconds until the screen saver at the login window: "1200", or "0" for never.
inline constexpr ToolCommand kSetLoginIdleTime{PROC_DEFAULTS, {"write", "/Library/Preferences/com.apple.screensaver",
                                               "loginWindowIdleTime", "-int", kVariable}};
// Moves from the temporary path.
inline constexpr ToolCommand kMoveServerConfig {PROC_SYSMV, {"-f", kVariable, kServerConfigFile}};
inline constexpr ToolCommand kChmodServerConfig{PROC_CHMOD, {"644", kServerConfigFile}};
inline constexpr ToolCommand kChownServerConfig{PROC_CHOWN, {"root", kServerConfigFile}};
inline constexpr ToolCommand kMoveLaunchdConfig {PROC_SYSMV, {"-f", kVariable, kLaunchdConfigFile}};
inline constexpr ToolCommand kChmodLaunchdConfig{PROC_CHMOD, {"644", kLaunchdConfigFile}};
inline constexpr ToolCommand kChownLaunchdConfig{PROC_CHOWN, {"root", kLaunchdConfigFile}};
// Reads a kernel value; its output goes to a buffer.
inline constexpr ToolCommand kReadKernelValue {PROC_SYSCTL, {"-n", kVariable}};
// clang-format on

// Every row above.
inline constexpr const ToolCommand* kToolCommands[] = {
    &kStopServer,         &kStartServer,        &kManageDisplays,
    &kManageAccess,       &kApplyConfig,        &kReboot,
    &kSetTileSize,        &kSetLoginIdleTime,   &kMoveServerConfig,
    &kChmodServerConfig,  &kChownServerConfig,  &kMoveLaunchdConfig,
    &kChmodLaunchdConfig, &kChownLaunchdConfig, &kReadKernelValue,
};

inline constexpr const char* kKernelMaxFiles = "kern.maxfiles";
inline constexpr const char* kKernelMaxFilesPerProcess = "kern.maxfilesperproc";

}  // namespace norvik
