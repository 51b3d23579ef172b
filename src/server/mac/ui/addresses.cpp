// Finds how this computer is reached, once for each process, and forms the two sentences about it.
#include "src/server/mac/ui/addresses.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "src/server/mac/pane/pane.h"
#include "src/server/mac/platform/platform.h"

namespace norvik {

char SBUF_CURHOST[kTextBufferSize] = {};
char SBUF_NVKADR[kTextBufferSize] = {};
char SBUF_RDPADR[kTextBufferSize] = {};

namespace {

constexpr int kLeastHostBuffer = 255;
constexpr std::size_t kSentenceLimit = 1023;  // with the terminating zero
constexpr std::size_t kLongestDomain = 5;     // a last label, its dot included, is shorter

void copyText(char* buffer, int size, const std::string& text) {
  const std::size_t length = std::min(text.size(), static_cast<std::size_t>(size - 1));
  std::fill(std::copy_n(text.data(), length, buffer), buffer + size, '\0');
}

void formSentence(char* buffer, const char* service, int64_t port, int64_t standard) {
  if (SBUF_CURHOST[0] == '\0') get_net_addr(SBUF_CURHOST, kTextBufferSize);
  const int length = std::snprintf(
      buffer, kSentenceLimit, "%s clients can connect to this computer using the following address:\n\n%s",
      service, SBUF_CURHOST);
  const auto end = static_cast<std::size_t>(length);
  if (port != standard && end < kSentenceLimit) {
    std::snprintf(buffer + end, kSentenceLimit - end, ":%d", static_cast<int>(port));
  }
  // The last byte of the NVK sentence's buffer, intentionally for the RDP sentence too: a sentence never
  // reaches the last byte of its own buffer.
  SBUF_NVKADR[kTextBufferSize - 1] = '\0';
}

}  // namespace

void NVKServerPrefs::updateNvkAddr(int64_t port) {
  formSentence(SBUF_NVKADR, "Norvik", port, kNvkDefaultPort);
}
void NVKServerPrefs::updateRdpAddr(int64_t port) {
  formSentence(SBUF_RDPADR, "RDP", port, kRdpDefaultPort);
}

int get_net_addr(char* buffer, int size) {
  if (buffer == nullptr || size < kLeastHostBuffer) return 0;
  const bool named = platform().host.gethostname(buffer, static_cast<std::size_t>(size - 1)) == 0;
  buffer[size - 1] = '\0';
  if (named && is_valid_host(buffer)) return 1;
  if (!named) buffer[0] = '\0';
  for (const auto& address : platform().host.addresses()) {
    if (!address || !is_ipv4_address(address->c_str())) continue;
    copyText(buffer, size, *address);
    break;
  }
  return buffer[0] != '\0' ? 1 : 0;
}

int is_valid_host(const char* text) {
  if (text == nullptr) return 0;
  const char* dot = std::strchr(text, '.');
  if (dot == nullptr) return 0;
  if (std::strchr(dot + 1, '.') != nullptr) return 1;
  const std::size_t domain = std::strlen(dot);
  return domain > 1 && domain < kLongestDomain ? 1 : 0;
}

int is_ipv4_address(const char* text) {
  if (text == nullptr || std::strpbrk(text, ":%") != nullptr) return 0;
  return std::count(text, text + std::strlen(text), '.') >= 3 ? 1 : 0;
}

}  // namespace norvik
