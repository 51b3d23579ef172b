// One start of the checking program for all texts of a test, as that takes longer than the check.
#include "tests/frontends/command/json_outputs.h"

#include <gtest/gtest.h>

#include <fstream>

#include "tests/support/program.h"

namespace norvik::command {

void JsonOutputs::keep(const std::string& text) {
  std::filesystem::create_directories(folder_);
  files_.push_back(folder_ / std::to_string(files_.size()));
  std::ofstream(files_.back()) << text;
}

void JsonOutputs::check() {
  if (files_.empty()) return;
  Words words{NORVIK_CHECK_JSON, NORVIK_JSON_SCHEMA};
  words.insert(words.end(), files_.begin(), files_.end());
  files_.clear();
  const ProgramResult result = runProgram(words, {}, ErrorOutput::withOutput);
  EXPECT_EQ(result.status, 0) << result.output;
}

}  // namespace norvik::command
