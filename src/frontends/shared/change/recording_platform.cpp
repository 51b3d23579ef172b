// The platform interfaces through which the pane changes something; each records and, by its mode, withholds.
#include "src/frontends/shared/change/recording_platform.h"

#include <cerrno>
#include <map>
#include <system_error>

namespace norvik {

namespace {

using RefusedPaths = std::set<std::string>;

// What the system says of the call that has just failed. `errno` is 0 before such a call, and stays so on a
// computer that does not set it.
std::string reasonOfFailure() {
  return errno != 0 ? std::generic_category().message(errno) : "";
}

class RecordingAlerts : public AlertPanels {
 public:
  RecordingAlerts(AlertPanels& alerts, const RecordingPlatform& owner) : alerts_(alerts), owner_(owner) {}

  int NSRunAlertPanel(const char* title, const char* message, const char* defaultButton,
                      const char* alternateButton, const char* otherButton) override {
    const int answer = owner_.isUnattended ? NSAlertDefaultReturn
                                           : alerts_.NSRunAlertPanel(title, message, defaultButton,
                                                                     alternateButton, otherButton);
    if (owner_.answered) owner_.answered(answer);
    return answer;
  }

 private:
  AlertPanels& alerts_;
  const RecordingPlatform& owner_;
};

class RecordingAuthorization : public AuthorizationService {
 public:
  RecordingAuthorization(AuthorizationService& service, RecordingMode mode, Effects& effects)
      : service_(service), mode_(mode), effects_(effects) {}

  OSStatus AuthorizationCreate(AuthorizationRights rights, AuthorizationFlags flags,
                               AuthorizationRef& authorization) override {
    if (mode_ != RecordingMode::pretending) return service_.AuthorizationCreate(rights, flags, authorization);
    // Any reference will do, as only this object ever sees it.
    authorization = reinterpret_cast<AuthorizationRef>(this);
    return errAuthorizationSuccess;
  }

  OSStatus AuthorizationCopyRights(AuthorizationRef authorization, AuthorizationRights rights,
                                   AuthorizationFlags flags) override {
    if (mode_ != RecordingMode::pretending)
      return service_.AuthorizationCopyRights(authorization, rights, flags);
    return (flags & kAuthorizationFlagInteractionAllowed) != 0 ? errAuthorizationSuccess
                                                               : errAuthorizationDenied;
  }

  OSStatus AuthorizationRightRemove(AuthorizationRef authorization, std::string_view name) override {
    if (mode_ == RecordingMode::pretending) return errAuthorizationSuccess;
    return service_.AuthorizationRightRemove(authorization, name);
  }

  // Looking keeps the rights, so that nobody is asked for a password again when the change is made.
  OSStatus AuthorizationFree(AuthorizationRef authorization, AuthorizationFlags flags) override {
    if (mode_ == RecordingMode::pretending) return errAuthorizationSuccess;
    if (mode_ == RecordingMode::looking) flags &= ~kAuthorizationFlagDestroyRights;
    return service_.AuthorizationFree(authorization, flags);
  }

  OSStatus AuthorizationExecuteWithPrivileges(AuthorizationRef authorization, const char* path,
                                              AuthorizationFlags flags, const char* const* arguments,
                                              FileRef* communicationsPipe) override {
    const bool reports = communicationsPipe != nullptr;
    Launch launch{path, {}, reports, false};
    for (const char* const* word = arguments; *word != nullptr; ++word) launch.arguments.emplace_back(*word);
    OSStatus status = errAuthorizationSuccess;
    if (mode_ == RecordingMode::real || (mode_ == RecordingMode::looking && reports)) {
      status = service_.AuthorizationExecuteWithPrivileges(authorization, path, flags, arguments,
                                                           communicationsPipe);
    } else if (reports) {
      *communicationsPipe = nullptr;
    }
    launch.refused = status != errAuthorizationSuccess;
    effects_.launches.push_back(std::move(launch));
    return status;
  }

 private:
  AuthorizationService& service_;
  RecordingMode mode_;
  Effects& effects_;
};

class RecordingFiles : public Files {
 public:
  RecordingFiles(Files& files, RecordingMode mode, Effects& effects, const RefusedPaths& refused)
      : files_(files), mode_(mode), effects_(effects), refused_(refused) {}

  FileRef fopen(const char* path, FileMode mode) override {
    const bool writes = mode == FileMode::writeBinary;
    if (writes && mode_ != RecordingMode::real) {
      effects_.written.emplace_back(path);
      return nowhere();
    }
    errno = 0;
    const FileRef file = writes && refused_.contains(path) ? nullptr : files_.fopen(path, mode);
    if (writes && file == nullptr) effects_.unwritten.push_back({path, reasonOfFailure()});
    if (writes && file != nullptr) written_[file] = {path, false};
    return file;
  }
  int fseek(FileRef file, int64_t offset, SeekOrigin origin) override {
    return file == nowhere() ? 0 : files_.fseek(file, offset, origin);
  }
  int64_t ftell(FileRef file) override { return file == nowhere() ? 0 : files_.ftell(file); }
  std::size_t fread(void* bytes, std::size_t size, FileRef file) override {
    return file == nowhere() ? 0 : files_.fread(bytes, size, file);
  }
  std::size_t fwrite(const void* bytes, std::size_t size, FileRef file) override {
    if (file == nowhere()) return size;
    errno = 0;
    const std::size_t written = files_.fwrite(bytes, size, file);
    const auto known = written_.find(file);
    if (written < size && known != written_.end()) addUnwritten(known->second);
    return written;
  }
  int fclose(FileRef file) override {
    if (file == nowhere()) return 0;
    auto written = written_.extract(file);
    errno = 0;
    const int result = files_.fclose(file);
    if (!written) return result;
    if (result != 0) addUnwritten(written.mapped());
    if (!written.mapped().failed) effects_.written.push_back(written.mapped().path);
    return result;
  }
  int mkdir(const char* path, uint32_t mode) override {
    return mode_ == RecordingMode::real ? files_.mkdir(path, mode) : 0;
  }

 private:
  struct Writing {
    std::string path;
    bool failed = false;
  };

  // Writing and closing may both fail.
  void addUnwritten(Writing& file) {
    if (!file.failed) effects_.unwritten.push_back({file.path, reasonOfFailure()});
    file.failed = true;
  }
  // A file that takes everything and keeps nothing.
  FileRef nowhere() { return reinterpret_cast<FileRef>(this); }

  Files& files_;
  RecordingMode mode_;
  Effects& effects_;
  const RefusedPaths& refused_;
  std::map<FileRef, Writing> written_;  // the files that are being written
};

class RecordingPropertyLists : public PropertyListFiles {
 public:
  RecordingPropertyLists(PropertyListFiles& lists, RecordingMode mode, Effects& effects,
                         const RefusedPaths& refused)
      : lists_(lists), mode_(mode), effects_(effects), refused_(refused) {}

  std::optional<PropertyList> dictionaryWithContentsOfFile(const std::string& path) override {
    return lists_.dictionaryWithContentsOfFile(path);
  }
  bool writeToFile(const PropertyList& dictionary, const std::string& path) override {
    errno = 0;
    const bool refused = refused_.contains(path);
    if (mode_ != RecordingMode::real || (!refused && lists_.writeToFile(dictionary, path))) {
      effects_.written.push_back(path);
      return true;
    }
    effects_.unwritten.push_back({path, reasonOfFailure()});
    return false;
  }
  std::string stringByExpandingTildeInPath(std::string_view path) override {
    return lists_.stringByExpandingTildeInPath(path);
  }

 private:
  PropertyListFiles& lists_;
  RecordingMode mode_;
  Effects& effects_;
  const RefusedPaths& refused_;
};

class RecordingNotifications : public DistributedNotificationCenter {
 public:
  RecordingNotifications(DistributedNotificationCenter& center, RecordingMode mode, Effects& effects)
      : center_(center), mode_(mode), effects_(effects) {}

  void postNotificationName(const char* name, const char* object, unsigned options) override {
    effects_.posted.emplace_back(name);
    if (mode_ == RecordingMode::real) center_.postNotificationName(name, object, options);
  }

 private:
  DistributedNotificationCenter& center_;
  RecordingMode mode_;
  Effects& effects_;
};

class RecordingProcesses : public PosixProcesses {
 public:
  RecordingProcesses(PosixProcesses& processes, RecordingMode mode, Effects& effects)
      : processes_(processes), mode_(mode), effects_(effects) {}

  KillResult kill(int32_t pid, Signal signal) override {
    if (signal == Signal::none) return processes_.kill(pid, signal);
    const KillResult result = mode_ == RecordingMode::real ? processes_.kill(pid, signal) : KillResult::sent;
    if (result == KillResult::sent) effects_.signalled.push_back(pid);
    if (result == KillResult::otherError) effects_.notSignalled.push_back(pid);
    return result;
  }
  int32_t getpid() override { return processes_.getpid(); }
  void usleep(uint32_t microseconds) override {
    if (mode_ == RecordingMode::real) processes_.usleep(microseconds);
  }

 private:
  PosixProcesses& processes_;
  RecordingMode mode_;
  Effects& effects_;
};

class RecordingLog : public SystemLog {
 public:
  RecordingLog(SystemLog& log, RecordingMode mode, Effects& effects)
      : log_(log), mode_(mode), effects_(effects) {}

  void syslog(int priority, std::string_view line) override {
    effects_.logged.emplace_back(line);
    if (mode_ == RecordingMode::real) log_.syslog(priority, line);
  }

 private:
  SystemLog& log_;
  RecordingMode mode_;
  Effects& effects_;
};

}  // namespace

struct RecordingPlatform::Interfaces {
  Interfaces(Platform& computer, AlertPanels& shown, Drawing& drawing, RecordingMode mode,
             RecordingPlatform& owner)
      : alerts(shown, owner),
        authorization(computer.authorization, mode, owner.effects_),
        files(computer.files, mode, owner.effects_, owner.refused_),
        propertyLists(computer.propertyLists, mode, owner.effects_, owner.refused_),
        notifications(computer.notifications, mode, owner.effects_),
        posix(computer.posix, mode, owner.effects_),
        log(computer.log, mode, owner.effects_),
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

  RecordingAlerts alerts;
  RecordingAuthorization authorization;
  RecordingFiles files;
  RecordingPropertyLists propertyLists;
  RecordingNotifications notifications;
  RecordingProcesses posix;
  RecordingLog log;
  Platform platform;
};

RecordingPlatform::RecordingPlatform(Platform& computer, AlertPanels& alerts, Drawing& drawing,
                                     RecordingMode mode)
    : interfaces_(std::make_unique<Interfaces>(computer, alerts, drawing, mode, *this)),
      before_(installedPlatform()) {
  installPlatform(&interfaces_->platform);
}

RecordingPlatform::~RecordingPlatform() {
  installPlatform(before_);
}

}  // namespace norvik
