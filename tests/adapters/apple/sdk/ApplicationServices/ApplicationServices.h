// The types of the Process Manager that the adapter uses; its functions are looked up by name. Written from
// developer.apple.com/documentation/applicationservices (ProcessSerialNumber, ProcessInfoRec,
// ProcessInformationCopyDictionary), the record's packing from the same.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#pragma pack(push, 2)
typedef struct ProcessSerialNumber {
  UInt32 highLongOfPSN;
  UInt32 lowLongOfPSN;
} ProcessSerialNumber;

struct FSRef;

typedef struct ProcessInfoRec {
  UInt32 processInfoLength;
  unsigned char* processName;
  ProcessSerialNumber processNumber;
  UInt32 processType;
  OSType processSignature;
  UInt32 processMode;
  char* processLocation;
  UInt32 processSize;
  UInt32 processFreeMem;
  ProcessSerialNumber processLauncher;
  UInt32 processLaunchDate;
  UInt32 processActiveTime;
  struct FSRef* processAppRef;
} ProcessInfoRec;
#pragma pack(pop)

enum { kProcessDictionaryIncludeAllInformationMask = (int)0xFFFFFFFF };
