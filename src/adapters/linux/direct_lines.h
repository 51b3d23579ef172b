// Lines of somebody who is the super-user already: the helper's program is started for each. This needs no
// bus and no polkit, as in a container or while an installation image is made.
#pragma once

#include <string>
#include <vector>

#include "src/adapters/linux/privileged_lines.h"
#include "src/adapters/linux/tool_launcher.h"

namespace norvik {

class DirectLines : public PrivilegedLines {
 public:
  // `tools` is borrowed.
  explicit DirectLines(ToolLauncher& tools) : tools_(tools) {}

  Answer run(const std::string& tool, const std::vector<std::string>& arguments, bool mayAsk,
             Descriptor* output) override;

  void forget() override { tools_.forget(); }
  bool wait(std::chrono::milliseconds limit) override { return tools_.wait(limit); }
  // With the lines' own tools and arguments.
  std::vector<ToolOutcome> outcomes() override;

 private:
  ToolLauncher& tools_;
};

}  // namespace norvik
