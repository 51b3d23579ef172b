// File operations of a program that fail, or end it, as a test chooses: failing_calls.cpp, which is preloaded
// into the program and into those that it starts, says what the fields mean.
#pragma once

#include <map>
#include <string>

namespace norvik {

struct Fault {
  std::string calls = "all";    // "write", "fsync,close"
  std::string effect = "NONE";  // "ENOSPC", "SHORT,EIO", "KILL", "STOP"
  std::string number = "1+";    // "3" is the third operation that counts, "3+" also all after it
  std::string path = "*";       // a pattern of the file's path: "*/svr.cfg"
  std::string program = {};     // its file name, "mv"; every one where empty
  std::string log = {};         // a file that lists the operations that count; none where empty
};

// The variables for ProgramOptions. A program under the sanitizers takes the library too.
std::map<std::string, std::string> environmentOf(const Fault& fault);

}  // namespace norvik
