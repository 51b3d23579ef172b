// NSWorkspace's list, by process ids, and the Info dictionaries of the bundles.
#include <algorithm>
#include <string>
#include <vector>

#include "src/adapters/apple/process_manager.h"

#import <AppKit/AppKit.h>

#import "src/adapters/apple/foundation.h"

namespace norvik {

namespace {

using apple::Pool;
using apple::text;
using apple::utf8;

NSBundle* bundleOf(NSRunningApplication* application) {
  NSString* folder = [[application bundleURL] path];
  return folder != nil ? [NSBundle bundleWithPath:folder] : nil;
}

// The application of a process; nil where there is none or it has no bundle.
NSRunningApplication* applicationOf(const ProcessSerialNumber& process) {
  if (process.highLongOfPSN != 0 || process.lowLongOfPSN == kNoProcess) return nil;
  NSArray* running = [[NSWorkspace sharedWorkspace] runningApplications];
  for (NSUInteger i = 0; i < [running count]; ++i) {
    NSRunningApplication* application = [running objectAtIndex:i];
    if (static_cast<uint32_t>([application processIdentifier]) == process.lowLongOfPSN)
      return bundleOf(application) != nil ? application : nil;
  }
  return nil;
}

// A code of an Info dictionary, such as "APPL"; 0 where it is missing or no code.
OSType code(NSBundle* bundle, NSString* key) {
  const id value = [bundle objectForInfoDictionaryKey:key];
  if (![value isKindOfClass:[NSString class]]) return 0;
  NSData* bytes = [value dataUsingEncoding:NSMacOSRomanStringEncoding];
  if ([bytes length] != 4) return 0;
  OSType result = 0;
  for (NSUInteger i = 0; i < 4; ++i)
    result = result << 8 | static_cast<const unsigned char*>([bytes bytes])[i];
  return result;
}

}  // namespace

bool RunningApplications::isAvailable() {
  const Class known = NSClassFromString(@"NSRunningApplication");
  return known != Nil && [NSWorkspace instancesRespondToSelector:@selector(runningApplications)];
}

OSErr RunningApplications::GetNextProcess(ProcessSerialNumber& process) {
  const Pool pool;
  std::vector<uint32_t> later;
  NSArray* running = [[NSWorkspace sharedWorkspace] runningApplications];
  for (NSUInteger i = 0; i < [running count]; ++i) {
    NSRunningApplication* application = [running objectAtIndex:i];
    const pid_t pid = [application processIdentifier];
    if (pid > 0 && static_cast<uint32_t>(pid) > process.lowLongOfPSN && bundleOf(application) != nil)
      later.push_back(static_cast<uint32_t>(pid));
  }
  process = {};
  if (later.empty()) return procNotFound;
  process.lowLongOfPSN = *std::min_element(later.begin(), later.end());
  return noErr;
}

OSErr RunningApplications::GetProcessInformation(const ProcessSerialNumber& process,
                                                 ProcessInfoRec& information) {
  const Pool pool;
  NSRunningApplication* application = applicationOf(process);
  if (application == nil) return procNotFound;
  NSBundle* bundle = bundleOf(application);
  information.processNumber = process;
  information.processType = code(bundle, @"CFBundlePackageType");
  information.processSignature = code(bundle, @"CFBundleSignature");
  return noErr;
}

std::optional<PropertyList> RunningApplications::ProcessInformationCopyDictionary(
    const ProcessSerialNumber& process) {
  const Pool pool;
  NSRunningApplication* application = applicationOf(process);
  if (application == nil) return std::nullopt;
  PropertyList::Dictionary known{
      {"pid", PropertyList(static_cast<int64_t>(process.lowLongOfPSN))},
      {"BundlePath", PropertyList(utf8([[application bundleURL] path]))},
  };
  if (NSString* identifier = [application bundleIdentifier]; identifier != nil)
    known.emplace("CFBundleIdentifier", PropertyList(utf8(identifier)));
  return PropertyList(std::move(known));
}

OSErr RunningApplications::GetProcessPID(const ProcessSerialNumber& process, int32_t& pid) {
  const Pool pool;
  NSRunningApplication* application = applicationOf(process);
  if (application == nil) return procNotFound;
  pid = [application processIdentifier];
  return noErr;
}

}  // namespace norvik
