// What is done inside the helper instead of by a tool: moving files into place, their mode and owner, the
// preference files, and what the kernel says. Starts nothing.
#pragma once

#include <sys/types.h>

#include <string>

#include "src/helper/allowed_lines.h"

namespace norvik::helper {

// The computer that the helper works on. Only tests have another than the whole one.
struct Computer {
  std::string root;     // in front of every path
  uid_t superUser = 0;  // who owns what is installed
};

struct StepOutcome {
  int status = 0;      // as a tool would exit
  std::string output;  // as a tool would write to its standard output
  std::string words;   // and to its standard error
};

// Carries out a line that starts no tool, for the caller with that user id, and returns when it is done. Only
// the files of the line are touched.
StepOutcome carryOut(const Computer& computer, const AllowedLine& line, uid_t caller);

}  // namespace norvik::helper
