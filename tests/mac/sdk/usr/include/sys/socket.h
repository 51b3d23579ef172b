// Sockets, as POSIX describes them (https://pubs.opengroup.org/onlinepubs/9799919799/basedefs/sys_socket.h.html), with the
// length byte that addresses have on BSD systems. Own work, for compiling and linking alone: newlib has no sockets.
#pragma once

#include <sys/types.h>

typedef unsigned int socklen_t;
typedef unsigned char sa_family_t;

struct sockaddr {
  unsigned char sa_len;
  sa_family_t sa_family;
  char sa_data[14];
};

#define SOCK_STREAM 1
#define SOCK_DGRAM 2
#define AF_UNSPEC 0
#define AF_UNIX 1
#define AF_INET 2
#define AF_INET6 30
#define SOL_SOCKET 0xffff
#define SO_REUSEADDR 0x0004
#define SO_ERROR 0x1007
#define SO_NOSIGPIPE 0x1022

#ifdef __cplusplus
extern "C" {
#endif
int socket(int domain, int type, int protocol);
int socketpair(int domain, int type, int protocol, int sockets[2]);
int bind(int socket, const struct sockaddr* address, socklen_t length);
int connect(int socket, const struct sockaddr* address, socklen_t length);
int listen(int socket, int backlog);
int accept(int socket, struct sockaddr* address, socklen_t* length);
int getsockname(int socket, struct sockaddr* address, socklen_t* length);
int setsockopt(int socket, int level, int name, const void* value, socklen_t length);
int getsockopt(int socket, int level, int name, void* value, socklen_t* length);
ssize_t send(int socket, const void* bytes, size_t length, int flags);
ssize_t recv(int socket, void* bytes, size_t length, int flags);
int shutdown(int socket, int how);
#ifdef __cplusplus
}
#endif
