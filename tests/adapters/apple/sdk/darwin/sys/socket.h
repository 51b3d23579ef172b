// POSIX sys/socket.h; the length byte of an address is in the platform's manual page inet6(4).
#pragma once
#include <stdint.h>
#include <sys/types.h>
#ifdef __cplusplus
extern "C" {
#endif
#define AF_INET 2
#define AF_INET6 30
#define SOCK_STREAM 1
#define SOL_SOCKET 0xffff
#define SO_REUSEADDR 0x0004
#define SO_ERROR 0x1007
#define SHUT_WR 1
typedef uint8_t sa_family_t;
typedef uint32_t socklen_t;
struct sockaddr_storage {
  uint8_t ss_len;
  sa_family_t ss_family;
  char ss_data[126];
} __attribute__((aligned(8)));
struct sockaddr {
  uint8_t sa_len;
  sa_family_t sa_family;
  char sa_data[14];
};
int socket(int domain, int type, int protocol);
int bind(int socket, const struct sockaddr* address, socklen_t size);
int connect(int socket, const struct sockaddr* address, socklen_t size);
int getsockname(int socket, struct sockaddr* address, socklen_t* size);
int setsockopt(int socket, int level, int option, const void* value, socklen_t size);
int getsockopt(int socket, int level, int option, void* value, socklen_t* size);
int shutdown(int socket, int how);
#ifdef __cplusplus
}
#endif
