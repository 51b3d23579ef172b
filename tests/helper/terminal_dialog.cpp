// A pseudo-terminal, whose other end is the program's controlling terminal.
#include "tests/helper/terminal_dialog.h"

#include <grp.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <csignal>

#include "tests/support/waiting.h"

namespace norvik::helper {

TerminalDialog::TerminalDialog(const std::vector<std::string>& words, uid_t user) {
  std::vector<char*> argv;
  for (const std::string& word : words) argv.push_back(const_cast<char*>(word.c_str()));
  argv.push_back(nullptr);
  process_ = ::forkpty(&terminal_, nullptr, nullptr, nullptr);
  if (process_ != 0) return;
  if (::fchown(STDIN_FILENO, user, user) == 0 && ::setgroups(0, nullptr) == 0 && ::setgid(user) == 0 &&
      ::setuid(user) == 0)
    ::execv(argv[0], argv.data());
  ::_exit(127);
}

TerminalDialog::~TerminalDialog() {
  ::kill(process_, SIGKILL);
  ::waitpid(process_, nullptr, 0);
  ::close(terminal_);
}

bool TerminalDialog::readMore() {
  pollfd source{terminal_, POLLIN, 0};
  std::array<char, 4096> block;
  if (::poll(&source, 1, static_cast<int>(kPatience.count())) <= 0) return false;
  const ssize_t count = ::read(terminal_, block.data(), block.size());
  if (count <= 0) return false;
  shown_.append(block.data(), static_cast<std::size_t>(count));
  std::erase(shown_, '\r');
  return true;
}

bool TerminalDialog::shows(const std::string& text) {
  std::size_t at = std::string::npos;
  while ((at = shown_.find(text, found_)) == std::string::npos) {
    if (!readMore()) return false;
  }
  found_ = at + text.size();
  return true;
}

void TerminalDialog::typeSecret(const std::string& line) {
  termios settings{};
  EXPECT_TRUE(
      eventually([&] { return ::tcgetattr(terminal_, &settings) == 0 && (settings.c_lflag & ECHO) == 0; }));
  const std::string typed = line + "\n";
  EXPECT_EQ(::write(terminal_, typed.data(), typed.size()), static_cast<ssize_t>(typed.size()));
}

std::string TerminalDialog::rest() {
  while (readMore()) continue;
  return shown_;
}

}  // namespace norvik::helper
