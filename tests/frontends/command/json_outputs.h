// The JSON that runs of norvikctl have printed, checked against the schema of the documents.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace norvik::command {

class JsonOutputs {
 public:
  // Keeps the texts in files of this folder, which is made as needed.
  explicit JsonOutputs(std::filesystem::path folder) : folder_(std::move(folder)) {}

  // Keeps what one run has printed, or one line of it.
  void keep(const std::string& text);
  // The test fails where one of the texts is nothing that the schema allows. Forgets them.
  void check();

 private:
  std::filesystem::path folder_;
  std::vector<std::string> files_;
};

}  // namespace norvik::command
