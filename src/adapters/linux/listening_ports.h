// Which TCP ports are listened on, read from the system's list of sockets and the open files of processes.
#pragma once

#include <string>

#include "src/adapters/linux/process_folder.h"
#include "src/adapters/services/listening_ports.h"

namespace norvik {

// A sandbox has no ports of its own: its daemon is a process of this computer with sockets of this computer.
class LinuxListeningPorts : public ListeningPorts {
 public:
  // Reads processes and sockets in this folder, which is laid out like /proc.
  explicit LinuxListeningPorts(std::string processFolder = kProcessFolder)
      : folder_(std::move(processFolder)) {}

  // Nothing also for a process that is gone, and where the files of one of its children may not be looked at.
  std::optional<std::set<uint16_t>> portsOf(int32_t pid) override;
  // Of several processes that share a socket, the one with the lowest id, which as a rule opened it.
  std::optional<PortHolder> holderOf(uint16_t port) override;
  // Blocks for at most half a second.
  bool accepts(uint16_t port) override;

 private:
  std::string folder_;
};

}  // namespace norvik
