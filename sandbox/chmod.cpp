// Stand-in for the tool that sets permissions: an octal mode and a path.
#include <charconv>

#include "sandbox/processes.h"
#include "sandbox/program.h"

namespace norvik::sandbox {
namespace {

int run(const Root& root, const Arguments& arguments) {
  unsigned mode = 0;
  const std::string word = arguments.empty() ? "" : arguments[0];
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), mode, 8);
  if (arguments.size() != 2 || error != std::errc{} || *end != '\0' || mode > 07777)
    return usage("chmod MODE PATH");
  waitForEarlierFileTools(root);
  std::filesystem::permissions(root.inside(arguments[1]), static_cast<std::filesystem::perms>(mode));
  logLine(root, "tools", "chmod set " + word + " on " + arguments[1]);
  return 0;
}

}  // namespace
}  // namespace norvik::sandbox

int main(int argc, char** argv) {
  return norvik::sandbox::runProgram(argc, argv, norvik::sandbox::run);
}
