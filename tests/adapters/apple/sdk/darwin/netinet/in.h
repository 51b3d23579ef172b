// POSIX netinet/in.h and arpa/inet.h.
#pragma once
#include <sys/socket.h>
#ifdef __cplusplus
extern "C" {
#endif
typedef uint16_t in_port_t;
typedef uint32_t in_addr_t;
#define IPPROTO_IPV6 41
#define IPV6_V6ONLY 27
#define INADDR_LOOPBACK 0x7f000001u
struct in_addr {
  in_addr_t s_addr;
};
struct in6_addr {
  uint8_t s6_addr[16];
};
struct sockaddr_in {
  uint8_t sin_len;
  sa_family_t sin_family;
  in_port_t sin_port;
  struct in_addr sin_addr;
  char sin_zero[8];
};
struct sockaddr_in6 {
  uint8_t sin6_len;
  sa_family_t sin6_family;
  in_port_t sin6_port;
  uint32_t sin6_flowinfo;
  struct in6_addr sin6_addr;
  uint32_t sin6_scope_id;
};
extern const struct in6_addr in6addr_loopback;
static inline uint16_t htons(uint16_t number) {
  return (uint16_t)(number << 8 | number >> 8);
}
static inline uint16_t ntohs(uint16_t number) {
  return htons(number);
}
static inline uint32_t htonl(uint32_t number) {
  return __builtin_bswap32(number);
}
static inline uint32_t ntohl(uint32_t number) {
  return htonl(number);
}
static inline int in6IsZero(const struct in6_addr* address, int first, int last) {
  for (int i = first; i < last; ++i) {
    if (address->s6_addr[i] != 0) return 0;
  }
  return 1;
}
#define IN6_IS_ADDR_UNSPECIFIED(address) in6IsZero(address, 0, 16)
#define IN6_IS_ADDR_LOOPBACK(address) (in6IsZero(address, 0, 15) && (address)->s6_addr[15] == 1)
#define IN6_IS_ADDR_LINKLOCAL(address) \
  ((address)->s6_addr[0] == 0xFE && ((address)->s6_addr[1] & 0xC0) == 0x80)
#define IN6_IS_ADDR_MULTICAST(address) ((address)->s6_addr[0] == 0xFF)
#ifdef __cplusplus
}
#endif
