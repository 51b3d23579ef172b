// POSIX poll.h.
#pragma once
#ifdef __cplusplus
extern "C" {
#endif
#define POLLOUT 0x0004
typedef unsigned int nfds_t;
struct pollfd {
  int fd;
  short events;
  short revents;
};
int poll(struct pollfd fds[], nfds_t nfds, int timeout);
#ifdef __cplusplus
}
#endif
