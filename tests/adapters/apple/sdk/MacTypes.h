// The platform's basic types, as far as the adapter names them. Written from the documentation:
// developer.apple.com/documentation/kernel/mactypes_h and
// developer.apple.com/documentation/coreservices/carbon_core (OSErr, OSStatus, OSType).
#pragma once

#include <stdint.h>

typedef unsigned char Boolean;
typedef uint8_t UInt8;
typedef uint32_t UInt32;
typedef int16_t SInt16;
typedef int32_t SInt32;
typedef SInt16 OSErr;
typedef SInt32 OSStatus;
typedef UInt32 OSType;
