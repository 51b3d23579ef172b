// Manual page getifaddrs(3) of the platform.
#pragma once
#include <sys/socket.h>
#ifdef __cplusplus
extern "C" {
#endif
struct ifaddrs {
  struct ifaddrs* ifa_next;
  char* ifa_name;
  unsigned int ifa_flags;
  struct sockaddr* ifa_addr;
};
int getifaddrs(struct ifaddrs** list);
void freeifaddrs(struct ifaddrs* list);
#ifdef __cplusplus
}
#endif
