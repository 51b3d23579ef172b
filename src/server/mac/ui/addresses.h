// How this computer is reached: its address, and the sentences that tell a person.
#pragma once

#include <cstddef>
#include <cstdint>

namespace norvik {

inline constexpr std::size_t kTextBufferSize = 1024;
inline constexpr int64_t kNvkDefaultPort = 4073;
inline constexpr int64_t kRdpDefaultPort = 3389;

// Zero-terminated texts that live as long as the process.
extern char
    SBUF_CURHOST[kTextBufferSize];  // the computer's address; empty until found, then never looked up again
extern char SBUF_NVKADR[kTextBufferSize];  // the sentence last made by updateNvkAddr
extern char SBUF_RDPADR[kTextBufferSize];  // the sentence last made by updateRdpAddr

// Stores the host name, where other computers can resolve it, or else the first IPv4 address, or else the
// host name all the same. 1 where something was found, else 0. A null buffer or a size below 255 is 0 and
// left alone.
int get_net_addr(char* buffer, int size);
// 1 for a name with two dots, or with one dot and one to three characters behind it; else, and for null, 0.
int is_valid_host(const char* text);
// 1 for a text with three dots and neither ":" nor "%"; else, and for null, 0.
int is_ipv4_address(const char* text);

}  // namespace norvik
