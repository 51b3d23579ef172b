// `forget OPERATION`, in place of the commands at the controls: from then on the pane's calls of that
// operation do not reach the computer, as if the pane forgot them.

#include "src/frontends/scenario/commands.h"
#include "src/frontends/scenario/known_words.h"

namespace norvik::scenario {

namespace {

struct Forgotten {
  bool fclose = false;
  bool invalidate = false;
  bool release = false;
  bool free = false;
};
Forgotten forgotten;

class ForgetfulFiles : public Files {
 public:
  explicit ForgetfulFiles(Files& files) : files_(files) {}

  FileRef fopen(const char* path, FileMode mode) override { return files_.fopen(path, mode); }
  int fseek(FileRef file, int64_t offset, SeekOrigin origin) override {
    return files_.fseek(file, offset, origin);
  }
  int64_t ftell(FileRef file) override { return files_.ftell(file); }
  std::size_t fread(void* bytes, std::size_t size, FileRef file) override {
    return files_.fread(bytes, size, file);
  }
  std::size_t fwrite(const void* bytes, std::size_t size, FileRef file) override {
    return files_.fwrite(bytes, size, file);
  }
  int fclose(FileRef file) override { return forgotten.fclose ? 0 : files_.fclose(file); }
  int mkdir(const char* path, uint32_t mode) override { return files_.mkdir(path, mode); }

 private:
  Files& files_;
};

class ForgetfulRunLoop : public RunLoop {
 public:
  explicit ForgetfulRunLoop(RunLoop& loop) : loop_(loop) {}

  CFRunLoopTimerRef CFRunLoopTimerCreate(double fireDate, double interval, CFRunLoopTimerCallBack callback,
                                         const CFRunLoopTimerContext& context) override {
    return loop_.CFRunLoopTimerCreate(fireDate, interval, callback, context);
  }
  void CFRunLoopAddTimer(CFRunLoopTimerRef timer) override { loop_.CFRunLoopAddTimer(timer); }
  void CFRunLoopTimerInvalidate(CFRunLoopTimerRef timer) override {
    if (!forgotten.invalidate) loop_.CFRunLoopTimerInvalidate(timer);
  }
  void CFRelease(CFRunLoopTimerRef timer) override {
    if (!forgotten.release) loop_.CFRelease(timer);
  }
  void runOnceInDefaultMode() override { loop_.runOnceInDefaultMode(); }

 private:
  RunLoop& loop_;
};

class ForgetfulAuthorization : public AuthorizationService {
 public:
  explicit ForgetfulAuthorization(AuthorizationService& service) : service_(service) {}

  OSStatus AuthorizationCreate(AuthorizationRights rights, AuthorizationFlags flags,
                               AuthorizationRef& authorization) override {
    return service_.AuthorizationCreate(rights, flags, authorization);
  }
  OSStatus AuthorizationCopyRights(AuthorizationRef authorization, AuthorizationRights rights,
                                   AuthorizationFlags flags) override {
    return service_.AuthorizationCopyRights(authorization, rights, flags);
  }
  OSStatus AuthorizationRightRemove(AuthorizationRef authorization, std::string_view name) override {
    return service_.AuthorizationRightRemove(authorization, name);
  }
  OSStatus AuthorizationFree(AuthorizationRef authorization, AuthorizationFlags flags) override {
    return forgotten.free ? errAuthorizationSuccess : service_.AuthorizationFree(authorization, flags);
  }
  OSStatus AuthorizationExecuteWithPrivileges(AuthorizationRef authorization, const char* path,
                                              AuthorizationFlags flags, const char* const* arguments,
                                              FileRef* communicationsPipe) override {
    return service_.AuthorizationExecuteWithPrivileges(authorization, path, flags, arguments,
                                                       communicationsPipe);
  }

 private:
  AuthorizationService& service_;
};

// The session's computer behind interfaces that can forget.
class ForgetfulComputer {
 public:
  explicit ForgetfulComputer(SimulatedComputer& computer)
      : files_(computer.files),
        runLoop_(computer.runLoop),
        authorization_(computer.authorization),
        platform_{.application = computer.application,
                  .alerts = computer.alerts,
                  .workspace = computer.workspace,
                  .notifications = computer.notifications,
                  .drawing = computer.drawing,
                  .runLoop = runLoop_,
                  .authorization = authorization_,
                  .files = files_,
                  .propertyLists = computer.propertyLists,
                  .processManager = computer.processManager,
                  .posix = computer.posix,
                  .host = computer.host,
                  .systemVersion = computer.systemVersion,
                  .bundles = computer.bundles,
                  .log = computer.log,
                  .assertions = computer.assertions} {}

  Platform& platform() { return platform_; }

 private:
  ForgetfulFiles files_;
  ForgetfulRunLoop runLoop_;
  ForgetfulAuthorization authorization_;
  Platform platform_;
};

struct Operation {
  std::string_view name;
  bool Forgotten::*flag;
};

constexpr Operation kOperations[] = {
    {"fclose", &Forgotten::fclose},
    {"CFRunLoopTimerInvalidate", &Forgotten::invalidate},
    {"CFRelease", &Forgotten::release},
    {"AuthorizationFree", &Forgotten::free},
};

void forget(Session& session, Arguments& arguments) {
  // A process runs one session, which ends before it.
  static ForgetfulComputer computer(session.computer);
  installPlatform(&computer.platform());
  forgotten.*rowNamed<Operation>("operation", arguments.word(), kOperations).flag = true;
}

constexpr CommandRow kCommands[] = {{"forget", forget}};

}  // namespace

std::span<const CommandRow> controlCommands() {
  return kCommands;
}

}  // namespace norvik::scenario
