// The system's folder of processes, /proc, read anew at each call: which processes there are, and what their
// links and files say. Shared by the parts of the adapter that look at other processes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace norvik {

inline constexpr const char* kProcessFolder = "/proc";

// The ids of the processes in the folder, in ascending order; none if it cannot be read.
std::vector<uint32_t> processesIn(const std::string& folder);

// The path of a file of a process: "/proc/812/status".
std::string processFile(uint32_t pid, std::string_view name, const std::string& folder = kProcessFolder);

// What a symbolic link says; empty if it cannot be read.
std::string linkTarget(const std::string& path);

}  // namespace norvik
