// The environment that hands a fault to the preloaded library.
#include "tests/support/failing_calls.h"

namespace norvik {

std::map<std::string, std::string> environmentOf(const Fault& fault) {
  std::map<std::string, std::string> variables{{"LD_PRELOAD", NORVIK_FAILING_CALLS},
                                               {"NORVIK_FAULT_CALL", fault.calls},
                                               {"NORVIK_FAULT_EFFECT", fault.effect},
                                               {"NORVIK_FAULT_NUMBER", fault.number},
                                               {"NORVIK_FAULT_PATH", fault.path}};
  if (!fault.program.empty()) variables["NORVIK_FAULT_PROGRAM"] = fault.program;
  if (!fault.log.empty()) variables["NORVIK_FAULT_LOG"] = fault.log;
  return variables;
}

}  // namespace norvik
