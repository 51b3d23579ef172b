// Internet addresses as text, as POSIX describes them
// (https://pubs.opengroup.org/onlinepubs/9799919799/basedefs/arpa_inet.h.html). Own work, for compiling and linking alone.
#pragma once

#include <netinet/in.h>

#ifdef __cplusplus
extern "C" {
#endif
const char* inet_ntop(int family, const void* address, char* text, socklen_t size);
int inet_pton(int family, const char* text, void* address);
#ifdef __cplusplus
}
#endif
