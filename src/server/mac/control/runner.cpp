// Running tools as the super-user with the pane's authorization, and the names of temporary files. Waits for
// no tool: a caller that needs an effect looks for it.
#include <algorithm>
#include <iterator>

#include "src/server/mac/pane/pane.h"
#include "src/server/mac/platform/log.h"
#include "src/server/mac/platform/platform.h"

namespace norvik {

namespace {

// `arguments` ends with null.
bool execute(AuthorizationRef authorization, const char* cmd, const char* const* arguments, FileRef* pipe) {
  return platform().authorization.AuthorizationExecuteWithPrivileges(
             authorization, cmd, kAuthorizationFlagDefaults, arguments, pipe) == errAuthorizationSuccess;
}

// One byte at a time, up to the end of the output or of the buffer.
void readOutput(FileRef pipe, char* buf, int32_t len) {
  int32_t count = 0;
  while (count < len - 1 && platform().files.fread(buf + count, 1, pipe) == 1) ++count;
  buf[count] = '\0';
}

}  // namespace

bool NVKServerPrefs::runCmd(const char* cmd, const char* arg0, const char* arg1, const char* arg2,
                            const char* arg3, const char* arg4) {
  if (!authorized()) return false;
  const char* const arguments[] = {arg0, arg1, arg2, arg3, arg4, nullptr};
  return execute(m_authRef, cmd, arguments, nullptr);
}

bool NVKServerPrefs::runCmdEx(const char* cmd, const char* arg0, const char* arg1, const char* arg2,
                              const char* arg3, const char* arg4, const char* arg5, const char* arg6,
                              const char* arg7, const char* arg8, const char* arg9) {
  if (!authorized()) return false;
  const char* const arguments[] = {arg0, arg1, arg2, arg3, arg4, arg5, arg6, arg7, arg8, arg9, nullptr};
  return execute(m_authRef, cmd, arguments, nullptr);
}

bool NVKServerPrefs::runCmdToBuf(char* buf, int32_t len, const char* cmd, const char* arg0, const char* arg1,
                                 const char* arg2, const char* arg3, const char* arg4) {
  if (!authorized()) return false;
  if (buf != nullptr && len >= 1) buf[len - 1] = '\0';
  const char* const arguments[] = {arg0, arg1, arg2, arg3, arg4, nullptr};
  FileRef pipe = nullptr;
  if (!execute(m_authRef, cmd, arguments, &pipe)) return false;
  if (pipe == nullptr) return true;
  if (buf != nullptr && len >= 2) readOutput(pipe, buf, len);
  platform().files.fclose(pipe);
  return true;
}

bool NVKServerPrefs::runTool(const ToolCommand& command, const char* variable) {
  const char* a[kMaxArguments];
  std::transform(std::begin(command.arguments), std::end(command.arguments), a,
                 [&](const char* argument) { return argument == kVariable ? variable : argument; });
  if (a[5] == nullptr) return runCmd(command.tool, a[0], a[1], a[2], a[3], a[4]);
  return runCmdEx(command.tool, a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7], a[8], a[9]);
}

// A failed change of mode or owner leaves a file in place that the daemons can read all the same, so it only
// warns.
bool NVKServerPrefs::installFile(const InstallCommands& commands, const std::string& temporary,
                                 const char* path) {
  if (!runTool(commands.move, temporary.c_str())) {
    logFailure(kCouldNotWriteFile, path);
    return false;
  }
  if (!runTool(commands.chmod)) logFailure("Norvik[W]: Could not change permissions for: %s", path);
  if (!runTool(commands.chown)) logFailure("Norvik[W]: Could not change owner for: %s", path);
  return true;
}

std::string NVKServerPrefs::getTempFilePath(const char* name) const {
  return std::string(kTemporaryFolder) + kTemporaryPrefix + (name != nullptr ? name : "") + "." +
         std::to_string(platform().posix.getpid());
}

}  // namespace norvik
