// polkit's own agent for terminals: asks for passwords at the terminal of this program.
#pragma once

#include <sys/types.h>

#include <memory>

namespace norvik {

class TextAgent {
 public:
  // Starts the agent for this process and returns when polkit knows it. Who works at a terminal is asked there,
  // also where the desktop could ask. Null where there is no terminal or no such program.
  static std::unique_ptr<TextAgent> start();
  // Ends the agent.
  ~TextAgent();
  TextAgent(const TextAgent&) = delete;
  TextAgent& operator=(const TextAgent&) = delete;

 private:
  explicit TextAgent(pid_t process) : process_(process) {}

  pid_t process_;
};

}  // namespace norvik
