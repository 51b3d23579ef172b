// Stand-in for the tool that shows kernel values; the sandbox's are in its own file "kernel", a name and a
// value on each line.
#include <iostream>
#include <sstream>
#include <stdexcept>

#include "sandbox/program.h"

namespace norvik::sandbox {
namespace {

int run(const Root& root, const Arguments& arguments) {
  if (arguments.size() != 2 || arguments[0] != "-n") return usage("sysctl -n NAME");
  std::istringstream lines(readFile(root.own("kernel")).value_or(""));
  for (std::string name, value; lines >> name >> value;) {
    if (name != arguments[1]) continue;
    std::cout << value << std::endl;
    return 0;
  }
  throw std::runtime_error("unknown name '" + arguments[1] + "'");
}

}  // namespace
}  // namespace norvik::sandbox

int main(int argc, char** argv) {
  return norvik::sandbox::runProgram(argc, argv, norvik::sandbox::run);
}
