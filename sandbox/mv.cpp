// Stand-in for the tool that moves files: "-f", from, to.
#include "sandbox/processes.h"
#include "sandbox/program.h"

namespace norvik::sandbox {
namespace {

int run(const Root& root, const Arguments& arguments) {
  if (arguments.size() != 3 || arguments[0] != "-f") return usage("mv -f FROM TO");
  waitForEarlierFileTools(root);
  const std::filesystem::path from = root.inside(arguments[1]);
  std::filesystem::path to = root.inside(arguments[2]);
  if (std::filesystem::is_directory(to)) to /= from.filename();
  std::filesystem::rename(from, to);
  logLine(root, "tools", "mv moved " + arguments[1] + " to " + arguments[2]);
  return 0;
}

}  // namespace
}  // namespace norvik::sandbox

int main(int argc, char** argv) {
  return norvik::sandbox::runProgram(argc, argv, norvik::sandbox::run);
}
