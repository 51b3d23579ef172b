// Each line is the helper's program with the line as its arguments.
#include "src/adapters/linux/direct_lines.h"

#include "src/adapters/linux/helper_interface.h"

namespace norvik {

PrivilegedLines::Answer DirectLines::run(const std::string& tool, const std::vector<std::string>& arguments,
                                         bool, Descriptor* output) {
  std::vector<std::string> words{kHelperLineOption, tool};
  words.insert(words.end(), arguments.begin(), arguments.end());
  Pipe pipe = output != nullptr ? makePipe() : Pipe{};
  if (output != nullptr && !pipe.reading) return Answer::notPossible;
  if (!tools_.start(kHelperProgram, words, pipe.writing)) return Answer::notPossible;
  if (output != nullptr) *output = std::move(pipe.reading);
  return Answer::launched;
}

std::vector<ToolOutcome> DirectLines::outcomes() {
  std::vector<ToolOutcome> outcomes = tools_.outcomes();
  for (ToolOutcome& outcome : outcomes) {
    if (outcome.tool != kHelperProgram || outcome.arguments.size() < 2) continue;
    outcome.tool = outcome.arguments[1];
    outcome.arguments.erase(outcome.arguments.begin(), outcome.arguments.begin() + 2);
  }
  return outcomes;
}

}  // namespace norvik
