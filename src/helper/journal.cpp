// Lines to syslog(3), facility authpriv, which only administrators read.
#include "src/helper/journal.h"

#include <syslog.h>

#include <algorithm>

#include "src/server/mac/text/escape.h"

namespace norvik::helper {

namespace {

constexpr std::size_t kLongestWord = 200;
constexpr std::size_t kLongestResult = 500;

}  // namespace

std::string nameOf(std::optional<uid_t> user, std::string_view busName) {
  return "uid " + (user ? std::to_string(*user) : "unknown") + " (" +
         (busName.empty() ? "directly" : escaped(busName)) + ")";
}

std::string textOf(std::string_view tool, const Words& arguments) {
  std::string text = quoted(tool.substr(0, kLongestWord));
  const std::size_t count = std::min<std::size_t>(arguments.size(), kMaxArguments);
  for (std::size_t i = 0; i < count; ++i)
    text += " " + quoted(std::string_view(arguments[i]).substr(0, kLongestWord));
  return count < arguments.size() ? text + " ..." : text;
}

void openJournal() {
  ::openlog("norvik-helper", LOG_PID, LOG_AUTHPRIV);
}

void writeJournal(std::string_view who, std::string_view line, std::string_view result) {
  const std::string text =
      std::string(who) + ": " + std::string(line) + ": " + escaped(result.substr(0, kLongestResult));
  ::syslog(LOG_NOTICE, "%s", text.c_str());
}

}  // namespace norvik::helper
