// POSIX netdb.h; the longest name is in the platform's manual page getnameinfo(3).
#pragma once
#include <sys/socket.h>
#ifdef __cplusplus
extern "C" {
#endif
#define NI_MAXHOST 1025
#define NI_NUMERICHOST 0x00000002
int getnameinfo(const struct sockaddr* address, socklen_t size, char* host, socklen_t hostSize, char* service,
                socklen_t serviceSize, int flags);
#ifdef __cplusplus
}
#endif
