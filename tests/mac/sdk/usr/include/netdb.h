// Names of computers, as POSIX describes them (https://pubs.opengroup.org/onlinepubs/9799919799/basedefs/netdb.h.html). Own
// work, for compiling and linking alone.
#pragma once

#include <sys/socket.h>

#define NI_MAXHOST 1025
#define NI_NUMERICHOST 0x00000002

#ifdef __cplusplus
extern "C" {
#endif
int getnameinfo(const struct sockaddr* address, socklen_t length, char* host, socklen_t hostSize, char* service,
                socklen_t serviceSize, int flags);
#ifdef __cplusplus
}
#endif
