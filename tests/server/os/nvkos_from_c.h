/* The exported queries as a program in C uses them. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Asks everything there is to ask; the result of NVKOS_BundleVersion for that identifier, or -1 where an
   answer cannot be that of a computer without a version. */
int32_t versionFromC(const char* identifier);

#ifdef __cplusplus
}
#endif
