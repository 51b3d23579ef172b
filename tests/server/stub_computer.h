// The smallest computer: each platform interface returns something fixed, at once and without allocating. For
// tests that are not about the computer. What a test varies is in the public fields.
#pragma once

#include <algorithm>
#include <cstring>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "src/server/mac/platform/platform.h"

namespace norvik {

struct StubApplication : HostApplication {
  std::weak_ptr<ActivationObserver> observer;
  std::optional<Rect> window = Rect{0, 0, 800, 600};

  std::optional<Rect> mainWindowFrame() override { return window; }
  void performOnMainThread(std::function<void()> operation, bool waitUntilDone) override {
    if (waitUntilDone) return operation();
    later = std::move(operation);
  }
  Color windowBackgroundColor() override { return {0.9, 0.9, 0.9, 1}; }
  void observeDidBecomeActive(std::weak_ptr<ActivationObserver> wanted) override {
    observer = std::move(wanted);
  }

  std::function<void()> later;  // the operation that is not waited for
};

struct StubInteraction : AlertPanels, Workspace, DistributedNotificationCenter, Drawing {
  int answer = NSAlertDefaultReturn;

  int NSRunAlertPanel(const char*, const char*, const char*, const char*, const char*) override {
    return answer;
  }
  void openURL(std::string_view) override {}
  void postNotificationName(const char*, const char*, unsigned) override {}
  void display(Control&) override {}
  void displayIfNeeded(View&) override {}
};

struct StubRunLoop : RunLoop {
  bool makesTimers = true;
  CFRunLoopTimerCallBack callback = nullptr;
  CFRunLoopTimerContext context;

  CFRunLoopTimerRef CFRunLoopTimerCreate(double, double, CFRunLoopTimerCallBack wanted,
                                         const CFRunLoopTimerContext& info) override {
    if (!makesTimers) return nullptr;
    callback = wanted;
    context = info;
    return reinterpret_cast<CFRunLoopTimerRef>(this);
  }
  void CFRunLoopAddTimer(CFRunLoopTimerRef) override {}
  void CFRunLoopTimerInvalidate(CFRunLoopTimerRef) override { callback = nullptr; }
  void CFRelease(CFRunLoopTimerRef) override {}
  void runOnceInDefaultMode() override {}
};

struct StubAuthorization : AuthorizationService {
  bool grants = false;
  bool makesReferences = true;

  OSStatus AuthorizationCreate(AuthorizationRights, AuthorizationFlags, AuthorizationRef& made) override {
    made = makesReferences ? reinterpret_cast<AuthorizationRef>(this) : nullptr;
    return makesReferences ? errAuthorizationSuccess : errAuthorizationInvalidRef;
  }
  OSStatus AuthorizationCopyRights(AuthorizationRef, AuthorizationRights, AuthorizationFlags) override {
    return grants ? errAuthorizationSuccess : errAuthorizationDenied;
  }
  OSStatus AuthorizationRightRemove(AuthorizationRef, std::string_view) override {
    return errAuthorizationSuccess;
  }
  OSStatus AuthorizationFree(AuthorizationRef, AuthorizationFlags) override {
    return errAuthorizationSuccess;
  }
  OSStatus AuthorizationExecuteWithPrivileges(AuthorizationRef, const char*, AuthorizationFlags,
                                              const char* const*, FileRef*) override {
    return errAuthorizationSuccess;
  }
};

// The pid file is the only one there is, and the daemon that it names is alive.
struct StubFiles : Files, PropertyListFiles, PosixProcesses {
  std::string_view pidFile;             // its content; no file if empty
  bool rewinds = true;                  // a seek to the start succeeds
  std::optional<int64_t> reportedSize;  // instead of the content's
  std::function<void()> whileAsleep = [] {};

  FileRef fopen(const char* path, FileMode mode) override {
    const bool found = mode == FileMode::readBinary && !pidFile.empty() &&
                       std::string_view(path) == "/var/run/nvkserverd.pid";
    return found ? reinterpret_cast<FileRef>(this) : nullptr;
  }
  int fseek(FileRef, int64_t, SeekOrigin origin) override {
    return origin == SeekOrigin::end || rewinds ? 0 : -1;
  }
  int64_t ftell(FileRef) override { return reportedSize.value_or(static_cast<int64_t>(pidFile.size())); }
  std::size_t fread(void* bytes, std::size_t size, FileRef) override {
    const std::size_t count = std::min(size, pidFile.size());
    std::memcpy(bytes, pidFile.data(), count);
    return count;
  }
  std::size_t fwrite(const void*, std::size_t size, FileRef) override { return size; }
  int fclose(FileRef) override { return 0; }
  int mkdir(const char*, uint32_t) override { return -1; }

  std::optional<PropertyList> dictionaryWithContentsOfFile(const std::string&) override {
    return std::nullopt;
  }
  bool writeToFile(const PropertyList&, const std::string&) override { return true; }
  std::string stringByExpandingTildeInPath(std::string_view path) override { return std::string(path); }

  KillResult kill(int32_t, Signal) override { return KillResult::sent; }
  int32_t getpid() override { return 812; }
  void usleep(uint32_t) override { whileAsleep(); }
};

struct StubHost : Host, ProcessManager {
  int gethostname(char* name, std::size_t size) override {
    std::strncpy(name, "mac.example.com", size);
    return 0;
  }
  std::vector<std::optional<std::string>> addresses() override { return {}; }

  OSErr GetNextProcess(ProcessSerialNumber&) override { return procNotFound; }
  OSErr GetProcessInformation(const ProcessSerialNumber&, ProcessInfoRec&) override { return procNotFound; }
  std::optional<PropertyList> ProcessInformationCopyDictionary(const ProcessSerialNumber&) override {
    return std::nullopt;
  }
  OSErr GetProcessPID(const ProcessSerialNumber&, int32_t&) override { return procNotFound; }
};

struct StubSystem : SystemVersion, Bundles, SystemLog, AssertionHandler {
  struct Failure {
    std::string function, file, description;
    int line = 0;
    bool operator==(const Failure&) const = default;
  };
  bool hasVersion = true;
  int versionQueries = 0;
  std::vector<Failure> failures;   // the assertions that failed
  std::vector<std::string> lines;  // of the log, each after its priority

  OSErr Gestalt(OSType, int32_t& response) override {
    ++versionQueries;
    if (!hasVersion) return gestaltUndefSelectorErr;
    response = versionQueries;
    return noErr;
  }
  CFBundleRef CFBundleGetMainBundle() override { return nullptr; }
  CFBundleRef CFBundleGetBundleWithIdentifier(std::string_view) override { return nullptr; }
  CFBundleRef paneBundle() override { return nullptr; }
  std::optional<std::string> CFBundleGetValueForInfoDictionaryKey(CFBundleRef, std::string_view) override {
    return std::nullopt;
  }
  std::optional<std::string> resource(CFBundleRef, std::string_view, std::string_view) override {
    return "TIFF";
  }
  void syslog(int priority, std::string_view line) override {
    lines.push_back(std::to_string(priority) + " " + std::string(line));
  }
  void handleFailureInFunction(std::string_view function, std::string_view file, int line,
                               std::string_view description) override {
    failures.push_back({std::string(function), std::string(file), std::string(description), line});
  }
};

// Installed for as long as it lives.
struct StubComputer {
  StubApplication application;
  StubInteraction interaction;
  StubRunLoop runLoop;
  StubAuthorization authorization;
  StubFiles files;
  StubHost host;
  StubSystem system;

  StubComputer() { installPlatform(&ports_); }
  ~StubComputer() { installPlatform(nullptr); }
  StubComputer(const StubComputer&) = delete;
  StubComputer& operator=(const StubComputer&) = delete;

 private:
  Platform ports_{application,   interaction, interaction, interaction, interaction, runLoop,
                  authorization, files,       files,       host,        files,       host,
                  system,        system,      system,      system};
};

}  // namespace norvik
