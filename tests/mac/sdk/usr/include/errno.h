// The number of the last error, under a Mac's name for the place that keeps it, and the errors that newlib
// does not have (https://pubs.opengroup.org/onlinepubs/9799919799/basedefs/errno.h.html). Own work, for
// compiling and linking alone.
#pragma once

#include_next <errno.h>

#undef errno
#ifdef __cplusplus
extern "C" {
#endif
int* __error(void);
#ifdef __cplusplus
}
#endif
#define errno (*__error())
