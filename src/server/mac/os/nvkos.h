// The exported queries of the operating system's version and of a bundle's version. C linkage: names and
// argument forms are the module's outward face and must stay. Needs an installed platform.
#pragma once

#include <cstdint>

#if defined(__GNUC__)
#define NVKOS_EXPORT __attribute__((visibility("default")))
#else
#define NVKOS_EXPORT
#endif

extern "C" {

// Major, minor and bug-fix version of the running system, and whether they were asked for (not 0). All 0 at
// first.
extern int32_t __nvkos_sys_ver[4];

// "MACOSX".
NVKOS_EXPORT extern const char __nvkos_sys_name[];

// Asks the system for its version and stores it in __nvkos_sys_ver. A part that the system does not tell
// stays 0 and is not asked for again. The result is that of the last of the three queries.
int32_t nvkos_update_sysver(void);

// Stores each part of the running version whose pointer is not null. Always 1.
NVKOS_EXPORT int32_t NVKOS_SystemVersion(int32_t* major, int32_t* minor, int32_t* bugfix);

// "MACOSX", constant.
NVKOS_EXPORT const char* NVKOS_SysName(void);

// 1 or 0: whether the running version is at least, equals, is above major.minor. The bug-fix part does not
// count.
NVKOS_EXPORT int32_t NVKOS_SysVerEqualOrGreater(int32_t major, int32_t minor);
NVKOS_EXPORT int32_t NVKOS_SysVerEqual(int32_t major, int32_t minor);
NVKOS_EXPORT int32_t NVKOS_SysVerGreater(int32_t major, int32_t minor);

// The version of the bundle with that identifier (UTF-8), or of the host application where it is null. 1 when
// a version was found, and each part whose pointer is not null was stored; else 0 and nothing is stored.
NVKOS_EXPORT int32_t NVKOS_BundleVersion(const char* identifier, int32_t* major, int32_t* minor,
                                         int32_t* bugfix);

}  // extern "C"
