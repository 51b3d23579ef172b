// POSIX syslog.h.
#pragma once
#ifdef __cplusplus
extern "C" {
#endif
#define LOG_ERR 3
void syslog(int priority, const char* message, ...);
#ifdef __cplusplus
}
#endif
