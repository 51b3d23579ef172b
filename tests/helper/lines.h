// Every line that the helper carries out, spelled out, for tests.
#pragma once

#include <string>
#include <vector>

namespace norvik::helper {

// The tool and its arguments.
using SpelledLine = std::vector<std::string>;

// In the order of the tool command table, with everything that may be in a free place; temporary paths are
// those of the process 812.
inline const std::vector<SpelledLine>& spelledLines() {
  static const std::vector<SpelledLine> lines = {
      {"/usr/sbin/nvkservice", "stop", "-w"},
      {"/usr/sbin/nvkservice", "start", "-f", "-w"},
      {"/usr/sbin/nvkservice", "dspcmd", "manage"},
      {"/usr/sbin/nvkservice", "admcmd", "manage"},
      {"/usr/sbin/nvkservice", "apply"},
      {"/sbin/reboot"},
      {"/usr/bin/defaults", "write", "/Library/Preferences/com.apple.windowserver", "GLCompositor", "-dict",
       "tileHeight", "-int", "0", "tileWidth", "-int", "0"},
      {"/usr/bin/defaults", "write", "/Library/Preferences/com.apple.windowserver", "GLCompositor", "-dict",
       "tileHeight", "-int", "256", "tileWidth", "-int", "256"},
      {"/usr/bin/defaults", "write", "/Library/Preferences/com.apple.screensaver", "loginWindowIdleTime",
       "-int", "0"},
      {"/usr/bin/defaults", "write", "/Library/Preferences/com.apple.screensaver", "loginWindowIdleTime",
       "-int", "1200"},
      {"/bin/mv", "-f", "/tmp/norvik.prefs.tmp.server.conf.812", "/etc/norvik/svr.cfg"},
      {"/bin/chmod", "644", "/etc/norvik/svr.cfg"},
      {"/usr/sbin/chown", "root", "/etc/norvik/svr.cfg"},
      {"/bin/mv", "-f", "/tmp/norvik.prefs.tmp.launchd.conf.812", "/etc/launchd.conf"},
      {"/bin/chmod", "644", "/etc/launchd.conf"},
      {"/usr/sbin/chown", "root", "/etc/launchd.conf"},
      {"/usr/sbin/sysctl", "-n", "kern.maxfiles"},
      {"/usr/sbin/sysctl", "-n", "kern.maxfilesperproc"}};
  return lines;
}

}  // namespace norvik::helper
