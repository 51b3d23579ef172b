// The exported queries of the operating system's version and of a bundle's version, for C as well. Names and
// argument forms are seen by other programs and must stay. Without an installed computer every query of the
// system or of a bundle fails.
#pragma once

#include <stdint.h>  // not <cstdint>, which C does not have

#if defined(__GNUC__)
#define NVKOS_EXPORT __attribute__((visibility("default")))
#else
#define NVKOS_EXPORT
#endif

#ifdef __cplusplus
extern "C" {
#endif

// Major, minor and bug-fix version of the running system, and whether they were queried (not 0). All 0 at
// first.
extern int32_t __nvkos_sys_ver[4];

// "MACOSX".
NVKOS_EXPORT extern const char __nvkos_sys_name[];

// Queries the system's version and stores it in __nvkos_sys_ver. A part whose query fails stays 0 and is not
// queried again. Returns the result of the last of the three queries, an OSErr.
int32_t nvkos_update_sysver(void);

// Stores each part of the running version whose pointer is not null. Always returns 1.
NVKOS_EXPORT int32_t NVKOS_SystemVersion(int32_t* major, int32_t* minor, int32_t* bugfix);

// "MACOSX", constant.
NVKOS_EXPORT const char* NVKOS_SysName(void);

// 1 or 0: whether the running version is at least, equals, is above major.minor. The bug-fix part is not
// compared.
NVKOS_EXPORT int32_t NVKOS_SysVerEqualOrGreater(int32_t major, int32_t minor);
NVKOS_EXPORT int32_t NVKOS_SysVerEqual(int32_t major, int32_t minor);
NVKOS_EXPORT int32_t NVKOS_SysVerGreater(int32_t major, int32_t minor);

// The version of the bundle with that identifier (UTF-8), or of the host application if it is null. Returns 1
// if a version was found, and stores each part whose pointer is not null; else 0, and stores nothing.
NVKOS_EXPORT int32_t NVKOS_BundleVersion(const char* identifier, int32_t* major, int32_t* minor,
                                         int32_t* bugfix);

#ifdef __cplusplus
}  // extern "C"
#endif
