// Calls with little memory. A sanitizer needs far more address space than the program, so there is no limit
// to set under one.
#pragma once

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>

#ifndef NORVIK_SANITIZED

namespace norvik {

// Whether the body returns true in a child that can get only so many more bytes of memory.
template <typename Body>
bool holdsWithMemory(rlim_t bytes, Body body) {
  const pid_t child = ::fork();
  if (child == 0) {
    rlim_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const rlim_t most = pages * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE)) + bytes;
    const rlimit limit{most, most};
    if (::setrlimit(RLIMIT_AS, &limit) != 0) ::_exit(2);
    try {
      ::_exit(body() ? 0 : 1);
    } catch (...) {
      ::_exit(3);
    }
  }
  int status = -1;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace norvik

#endif
