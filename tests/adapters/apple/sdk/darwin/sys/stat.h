// POSIX sys/stat.h: what the C library's own lacks.
#pragma once
#include_next <sys/stat.h>
#ifdef __cplusplus
extern "C" {
#endif
int lstat(const char* path, struct stat* status);
#ifdef __cplusplus
}
#endif
