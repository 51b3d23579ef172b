// Doubles of the Mac's services, for the adapter to run on where they are not. They behave as badly as the
// real ones do, and notice what those would not forgive. One computer at a time. The services may be called
// on any thread; tests look at the computer on the main thread.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace norvik::doubles {

// A bundle that the process has loaded.
struct BundleKind {
  std::map<std::string, std::string> info;
  std::string resources;  // the folder on the disk
};

struct Application {
  int32_t pid = 0;
  std::string type;
  std::string creator;
  std::string identifier;
  std::string folder;  // of its bundle, on the disk
};

// What a test sets and sees.
struct Mac {
  // The seconds that have passed for the authorization service.
  double seconds = 0;
  bool isAdministrator = true;
  int passwordsAsked = 0;
  std::string root;  // what a privileged tool finds in NORVIK_ROOT
  // The tools that were launched, by their process ids, until somebody has waited for them.
  std::set<pid_t> launched;
  bool hidesProcesses = false;  // the kernel's list is refused

  std::map<std::string, BundleKind> bundles;
  std::string paneIdentifier;

  std::vector<Application> applications;
  bool hasProcessInfoVersion = true;

  std::vector<std::string> posted;
  bool centreRefuses = false;
  std::vector<std::string> opened;
  std::vector<long> alertAnswers;   // of the next alerts, the first first
  std::vector<std::string> alerts;  // as TITLE|MESSAGE|BUTTON...

  // Every call of the services above, with its arguments, where a test asks for it.
  bool records = false;
  std::vector<std::string> calls;

  // What the real services would not forgive: memory that is used after its end, calls that may not be made.
  std::vector<std::string> violations;
};

// The one computer.
Mac& mac();
// Held while a service that may be called on any thread looks at the computer or changes it.
std::recursive_mutex& guard();
// A new one, where nothing was made yet. What is left of the last is forgotten.
void reset();
// What was not released, what was released too often, and every other violation; empty where all is well.
std::vector<std::string> faults();

void record(const std::string& call);
void violate(const std::string& what);
// The same, for the core's objects and the authorizations that were made and not given back.
std::vector<std::string> leakedObjects();
std::vector<std::string> leakedAuthorizations();
void forgetObjects();
void forgetTimers();
void forgetBundles();
void forgetAuthorizations();

}  // namespace norvik::doubles
