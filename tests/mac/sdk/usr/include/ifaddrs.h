// The addresses of the interfaces, as the manual page getifaddrs(3) of BSD systems describes them
// (https://man.openbsd.org/getifaddrs.3). Own work, for compiling and linking alone.
#pragma once

#include <sys/socket.h>

struct ifaddrs {
  struct ifaddrs* ifa_next;
  char* ifa_name;
  unsigned int ifa_flags;
  struct sockaddr* ifa_addr;
  struct sockaddr* ifa_netmask;
  struct sockaddr* ifa_dstaddr;
  void* ifa_data;
};

#ifdef __cplusplus
extern "C" {
#endif
int getifaddrs(struct ifaddrs** first);
void freeifaddrs(struct ifaddrs* first);
#ifdef __cplusplus
}
#endif
