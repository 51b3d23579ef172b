// Platform interface to the name and the addresses of this computer. Called on the main thread only; may
// block on name service.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace norvik {

class Host {
 public:
  virtual ~Host() = default;

  // Stores the host name as zero-terminated text if it fits into `size` bytes. Where it does not, stores it
  // cut (and then perhaps without a terminator), or fails. 0 on success, -1 on failure with the buffer's
  // content undefined.
  virtual int gethostname(char* name, std::size_t size) = 0;
  // The textual addresses of all interfaces, IPv4 and IPv6, in the system's order; an entry may be missing.
  virtual std::vector<std::optional<std::string>> addresses() = 0;
};

}  // namespace norvik
