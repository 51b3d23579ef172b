// Stand-in for the tool that sets owners. The sandbox's files belong to the user who runs it, so the owner is
// only noted, in the sandbox's own file "owners": an owner and a path on each line.
#include <map>
#include <sstream>
#include <stdexcept>

#include "sandbox/processes.h"
#include "sandbox/program.h"

namespace norvik::sandbox {
namespace {

int run(const Root& root, const Arguments& arguments) {
  if (arguments.size() != 2) return usage("chown OWNER PATH");
  waitForEarlierFileTools(root);
  if (!std::filesystem::exists(root.inside(arguments[1])))
    throw std::runtime_error(arguments[1] + ": no such file");
  std::map<std::string, std::string> owners;
  std::istringstream lines(readFile(root.own("owners")).value_or(""));
  for (std::string owner, path; lines >> owner && std::getline(lines >> std::ws, path);) owners[path] = owner;
  owners[arguments[1]] = arguments[0];
  std::string content;
  for (const auto& [path, owner] : owners) content += owner + " " + path + "\n";
  replaceFile(root.own("owners"), content);
  logLine(root, "tools", "chown noted " + arguments[0] + " as the owner of " + arguments[1]);
  return 0;
}

}  // namespace
}  // namespace norvik::sandbox

int main(int argc, char** argv) {
  return norvik::sandbox::runProgram(argc, argv, norvik::sandbox::run);
}
