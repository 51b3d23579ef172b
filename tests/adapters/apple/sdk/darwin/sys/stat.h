// POSIX sys/stat.h: what the C library's own lacks.
#pragma once
#include_next <sys/stat.h>
// stat(2): the names that the times have there.
#define st_mtimespec st_mtim
#define st_ctimespec st_ctim
#ifdef __cplusplus
extern "C" {
#endif
int lstat(const char* path, struct stat* status);
#ifdef __cplusplus
}
#endif
