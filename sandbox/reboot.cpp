// Stand-in for the tool that restarts the computer; only writes to a log.
#include "sandbox/program.h"

int main(int argc, char** argv) {
  using namespace norvik::sandbox;
  return runProgram(argc, argv, [](const Root& root, const Arguments& arguments) {
    if (!arguments.empty()) return usage("reboot");
    logLine(root, "reboot", "the computer would restart now");
    return 0;
  });
}
