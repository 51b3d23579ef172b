// The ports through which the pane changes something, each noting and, where told to, holding back.
#include "witness.h"

namespace norvik {

namespace {

class WitnessedAuthorization : public AuthorizationService {
 public:
  WitnessedAuthorization(AuthorizationService& service, Conduct conduct, Deeds& deeds)
      : service_(service), conduct_(conduct), deeds_(deeds) {}

  OSStatus AuthorizationCreate(AuthorizationRights rights, AuthorizationFlags flags,
                               AuthorizationRef& authorization) override {
    if (conduct_ != Conduct::pretending) return service_.AuthorizationCreate(rights, flags, authorization);
    // Any reference will do, as nobody but this object is shown it.
    authorization = reinterpret_cast<AuthorizationRef>(this);
    return errAuthorizationSuccess;
  }

  OSStatus AuthorizationCopyRights(AuthorizationRef authorization, AuthorizationRights rights,
                                   AuthorizationFlags flags) override {
    if (conduct_ != Conduct::pretending)
      return service_.AuthorizationCopyRights(authorization, rights, flags);
    return (flags & kAuthorizationFlagInteractionAllowed) != 0 ? errAuthorizationSuccess
                                                               : errAuthorizationDenied;
  }

  OSStatus AuthorizationRightRemove(AuthorizationRef authorization, std::string_view name) override {
    if (conduct_ == Conduct::pretending) return errAuthorizationSuccess;
    return service_.AuthorizationRightRemove(authorization, name);
  }

  // A look keeps the rights, so that nobody is asked for a password again when it is done in earnest.
  OSStatus AuthorizationFree(AuthorizationRef authorization, AuthorizationFlags flags) override {
    if (conduct_ == Conduct::pretending) return errAuthorizationSuccess;
    if (conduct_ == Conduct::looking) flags &= ~kAuthorizationFlagDestroyRights;
    return service_.AuthorizationFree(authorization, flags);
  }

  OSStatus AuthorizationExecuteWithPrivileges(AuthorizationRef authorization, const char* path,
                                              AuthorizationFlags flags, const char* const* arguments,
                                              FileRef* communicationsPipe) override {
    const bool reports = communicationsPipe != nullptr;
    Launch launch{path, {}, reports, false};
    for (const char* const* word = arguments; *word != nullptr; ++word) launch.arguments.emplace_back(*word);
    OSStatus status = errAuthorizationSuccess;
    if (conduct_ == Conduct::real || (conduct_ == Conduct::looking && reports)) {
      status = service_.AuthorizationExecuteWithPrivileges(authorization, path, flags, arguments,
                                                           communicationsPipe);
    } else if (reports) {
      *communicationsPipe = nullptr;
    }
    launch.refused = status != errAuthorizationSuccess;
    deeds_.launches.push_back(std::move(launch));
    return status;
  }

 private:
  AuthorizationService& service_;
  Conduct conduct_;
  Deeds& deeds_;
};

class WitnessedFiles : public Files {
 public:
  WitnessedFiles(Files& files, Conduct conduct) : files_(files), conduct_(conduct) {}

  FileRef fopen(const char* path, FileMode mode) override {
    if (mode == FileMode::writeBinary && conduct_ != Conduct::real) return nowhere();
    return files_.fopen(path, mode);
  }
  int fseek(FileRef file, int64_t offset, SeekOrigin origin) override {
    return file == nowhere() ? 0 : files_.fseek(file, offset, origin);
  }
  int64_t ftell(FileRef file) override { return file == nowhere() ? 0 : files_.ftell(file); }
  std::size_t fread(void* bytes, std::size_t size, FileRef file) override {
    return file == nowhere() ? 0 : files_.fread(bytes, size, file);
  }
  std::size_t fwrite(const void* bytes, std::size_t size, FileRef file) override {
    return file == nowhere() ? size : files_.fwrite(bytes, size, file);
  }
  void fclose(FileRef file) override {
    if (file != nowhere()) files_.fclose(file);
  }
  int mkdir(const char* path, uint32_t mode) override {
    return conduct_ == Conduct::real ? files_.mkdir(path, mode) : 0;
  }

 private:
  // A file that takes everything and keeps nothing.
  FileRef nowhere() { return reinterpret_cast<FileRef>(this); }

  Files& files_;
  Conduct conduct_;
};

class WitnessedPropertyLists : public PropertyListFiles {
 public:
  WitnessedPropertyLists(PropertyListFiles& lists, Conduct conduct) : lists_(lists), conduct_(conduct) {}

  std::optional<PropertyList> dictionaryWithContentsOfFile(const std::string& path) override {
    return lists_.dictionaryWithContentsOfFile(path);
  }
  bool writeToFile(const PropertyList& dictionary, const std::string& path) override {
    return conduct_ != Conduct::real || lists_.writeToFile(dictionary, path);
  }
  std::string stringByExpandingTildeInPath(std::string_view path) override {
    return lists_.stringByExpandingTildeInPath(path);
  }

 private:
  PropertyListFiles& lists_;
  Conduct conduct_;
};

class WitnessedNotifications : public DistributedNotificationCenter {
 public:
  WitnessedNotifications(DistributedNotificationCenter& center, Conduct conduct, Deeds& deeds)
      : center_(center), conduct_(conduct), deeds_(deeds) {}

  void postNotificationName(const char* name, const char* object, unsigned options) override {
    deeds_.posted.emplace_back(name);
    if (conduct_ == Conduct::real) center_.postNotificationName(name, object, options);
  }

 private:
  DistributedNotificationCenter& center_;
  Conduct conduct_;
  Deeds& deeds_;
};

class WitnessedProcesses : public PosixProcesses {
 public:
  WitnessedProcesses(PosixProcesses& processes, Conduct conduct, Deeds& deeds)
      : processes_(processes), conduct_(conduct), deeds_(deeds) {}

  KillResult kill(int32_t pid, Signal signal) override {
    if (signal == Signal::none) return processes_.kill(pid, signal);
    deeds_.signalled.push_back(pid);
    return conduct_ == Conduct::real ? processes_.kill(pid, signal) : KillResult::sent;
  }
  int32_t getpid() override { return processes_.getpid(); }
  void usleep(uint32_t microseconds) override {
    if (conduct_ == Conduct::real) processes_.usleep(microseconds);
  }

 private:
  PosixProcesses& processes_;
  Conduct conduct_;
  Deeds& deeds_;
};

class WitnessedLog : public SystemLog {
 public:
  WitnessedLog(SystemLog& log, Conduct conduct, Deeds& deeds) : log_(log), conduct_(conduct), deeds_(deeds) {}

  void syslog(int priority, std::string_view line) override {
    deeds_.logged.emplace_back(line);
    if (conduct_ == Conduct::real) log_.syslog(priority, line);
  }

 private:
  SystemLog& log_;
  Conduct conduct_;
  Deeds& deeds_;
};

}  // namespace

struct Witness::Ports {
  Ports(Platform& computer, AlertPanels& alerts, Drawing& drawing, Conduct conduct, Deeds& deeds)
      : authorization(computer.authorization, conduct, deeds),
        files(computer.files, conduct),
        propertyLists(computer.propertyLists, conduct),
        notifications(computer.notifications, conduct, deeds),
        posix(computer.posix, conduct, deeds),
        log(computer.log, conduct, deeds),
        platform{computer.application,
                 alerts,
                 computer.workspace,
                 notifications,
                 drawing,
                 computer.runLoop,
                 authorization,
                 files,
                 propertyLists,
                 computer.processManager,
                 posix,
                 computer.host,
                 computer.systemVersion,
                 computer.bundles,
                 log,
                 computer.assertions} {}

  WitnessedAuthorization authorization;
  WitnessedFiles files;
  WitnessedPropertyLists propertyLists;
  WitnessedNotifications notifications;
  WitnessedProcesses posix;
  WitnessedLog log;
  Platform platform;
};

Witness::Witness(Platform& computer, AlertPanels& alerts, Drawing& drawing, Conduct conduct)
    : ports_(std::make_unique<Ports>(computer, alerts, drawing, conduct, deeds_)) {
  installPlatform(&ports_->platform);
}

Witness::~Witness() {
  installPlatform(nullptr);
}

}  // namespace norvik
