// The command-line tools of the simulated computer, which take effect when they are launched. A tool that
// fails shows no sign of it and changes nothing.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "src/adapters/simulated/file_system.h"
#include "src/adapters/simulated/server_service.h"

namespace norvik {

class Tools {
 public:
  using Arguments = std::vector<std::string>;

  Tools(FileSystem& fileSystem, ServerService& service);

  // What the tool prints when it is launched with exactly these arguments, instead of its own output.
  void setOutput(const std::string& tool, const Arguments& arguments, std::string output);
  // The kernel value of that name; nothing for none.
  void setKernelValue(const std::string& name, std::optional<std::string> value);

  // Runs the tool as root and returns what it prints. A tool that this computer does not have does nothing.
  std::string run(const std::string& tool, const Arguments& arguments);

 private:
  struct Tool {
    std::string_view path;
    std::string (Tools::*run)(const Arguments& arguments);
  };
  static const Tool kTools[];

  std::string mv(const Arguments& arguments);
  std::string chmod(const Arguments& arguments);
  std::string chown(const Arguments& arguments);
  std::string defaults(const Arguments& arguments);
  std::string sysctl(const Arguments& arguments);
  std::string nvkservice(const Arguments& arguments);

  FileSystem& fileSystem_;
  ServerService& service_;
  std::map<std::string, std::string, std::less<>> kernel_;
  std::map<std::pair<std::string, Arguments>, std::string> outputs_;
};

}  // namespace norvik
