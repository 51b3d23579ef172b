// POSIX netdb.h; the longest name is in the platform's manual page getnameinfo(3).
#pragma once
#include <sys/socket.h>
#ifdef __cplusplus
extern "C" {
#endif
#define NI_MAXHOST 1025
#define NI_NUMERICHOST 0x00000002
#define AI_NUMERICHOST 0x00000004
struct addrinfo {
  int ai_flags;
  int ai_family;
  int ai_socktype;
  int ai_protocol;
  socklen_t ai_addrlen;
  char* ai_canonname;
  struct sockaddr* ai_addr;
  struct addrinfo* ai_next;
};
int getaddrinfo(const char* host, const char* service, const struct addrinfo* hints, struct addrinfo** list);
void freeaddrinfo(struct addrinfo* list);
int getnameinfo(const struct sockaddr* address, socklen_t size, char* host, socklen_t hostSize, char* service,
                socklen_t serviceSize, int flags);
#ifdef __cplusplus
}
#endif
