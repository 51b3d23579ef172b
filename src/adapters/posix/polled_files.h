// Tells by looking again whether files were written, replaced or removed, for computers whose own way of
// telling does not serve. Each look costs a question to the file system for each file.
#pragma once

#include <string>
#include <vector>

namespace norvik {

class PolledFiles {
 public:
  // Remembers the files at these paths on the disk as they are now, whether they are there or not.
  explicit PolledFiles(std::vector<std::string> paths);

  // Whether one of the files is another than at the last call: its content, or who may read it. Two changes
  // within the clock of the file system that leave the length the same count as one. Does not block.
  bool takeChanges();

 private:
  // What is compared between two looks at a file; empty for one that is not there.
  using State = std::vector<long long>;

  static State stateOf(const std::string& path);

  std::vector<std::string> paths_;
  std::vector<State> states_;
};

}  // namespace norvik
