// How this computer is reached: its address, and the sentences about it that a person reads.
#pragma once

#include <cstddef>
#include <cstdint>

namespace norvik {

inline constexpr std::size_t kTextBufferSize = 1024;
inline constexpr int64_t kNvkDefaultPort = 4073;
inline constexpr int64_t kRdpDefaultPort = 3389;

// Zero-terminated texts that live as long as the process.
// The computer's address; empty until found, then never looked up again.
extern char SBUF_CURHOST[kTextBufferSize];
// The sentences last made by updateNvkAddr and updateRdpAddr.
extern char SBUF_NVKADR[kTextBufferSize];
extern char SBUF_RDPADR[kTextBufferSize];

// Stores the host name if it looks like one that other computers can resolve, or else the first IPv4 address,
// or else the host name all the same. Returns 1 if something was found, else 0. Returns 0 for a null buffer
// or a size below 255, and leaves the buffer alone.
int get_net_addr(char* buffer, int size);
// 1 for a name with two dots, or with one dot and one to three characters after it; else, and for null, 0.
int is_valid_host(const char* text);
// 1 for a text with three dots and neither ":" nor "%"; else, and for null, 0.
int is_ipv4_address(const char* text);

}  // namespace norvik
