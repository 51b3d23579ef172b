// A program at a terminal of its own, where somebody reads before typing.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace norvik::helper {

class TerminalDialog {
 public:
  // Starts the program as that user.
  TerminalDialog(const std::vector<std::string>& words, uid_t user);
  ~TerminalDialog();
  TerminalDialog(const TerminalDialog&) = delete;
  TerminalDialog& operator=(const TerminalDialog&) = delete;

  // Whether the text appears, after what earlier calls found; waits for it.
  bool shows(const std::string& text);
  // Types a line when the program has switched the echo off, which discards what was typed before.
  void typeSecret(const std::string& line);
  // Everything that has appeared, with line feeds alone at the ends of lines; waits for the program's end.
  std::string rest();

 private:
  bool readMore();

  pid_t process_ = -1;
  int terminal_ = -1;
  std::string shown_;
  std::size_t found_ = 0;
};

}  // namespace norvik::helper
