// Waiting for descriptors, as POSIX describes it (https://pubs.opengroup.org/onlinepubs/9799919799/basedefs/poll.h.html).
// Own work, for compiling and linking alone: newlib has no poll.
#pragma once

typedef unsigned int nfds_t;

struct pollfd {
  int fd;
  short events;
  short revents;
};

#define POLLIN 0x0001
#define POLLOUT 0x0004
#define POLLERR 0x0008
#define POLLHUP 0x0010
#define POLLNVAL 0x0020

#ifdef __cplusplus
extern "C" {
#endif
int poll(struct pollfd* descriptors, nfds_t count, int milliseconds);
#ifdef __cplusplus
}
#endif
