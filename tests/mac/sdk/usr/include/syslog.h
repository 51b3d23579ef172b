// The system's log, as POSIX describes it (https://pubs.opengroup.org/onlinepubs/9799919799/basedefs/syslog.h.html). Own
// work, for compiling and linking alone.
#pragma once

#define LOG_ERR 3

#ifdef __cplusplus
extern "C" {
#endif
void syslog(int priority, const char* format, ...) __attribute__((format(printf, 2, 3)));
#ifdef __cplusplus
}
#endif
