// norvik-scenario: compares, prints or updates scenario files. Exit status 0 where all is as expected, 1
// where some file differs, crashed or left something behind, 2 where one is malformed.
#include <algorithm>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "src/frontends/scenario/scenario_file.h"
#include "src/frontends/scenario/scenario_run.h"
#include "src/frontends/scenario/unified_diff.h"

namespace norvik::scenario {

namespace {

enum Status { kSame = 0, kDifferent = 1, kMalformed = 2 };

constexpr const char* kUsage =
    "usage: norvik-scenario FILE...           run and compare\n"
    "       norvik-scenario --print FILE      print the file with its actual output\n"
    "       norvik-scenario --update FILE...  write the actual output into the files\n";

Status statusOf(RunResult::Outcome outcome) {
  switch (outcome) {
    case RunResult::Outcome::finished:
      return kSame;
    case RunResult::Outcome::malformed:
      return kMalformed;
    case RunResult::Outcome::leftSomething:
    case RunResult::Outcome::crashed:
      break;
  }
  return kDifferent;
}

Status compare(const std::string& path) {
  const RunResult result = runScenario(path);
  Status status = statusOf(result.outcome);
  std::string diff;
  if (result.isWhole()) {
    diff = unifiedDiff(linesOf(result.text), linesOf(result.actual), path, path + " (actual)");
  }
  if (!diff.empty()) status = kDifferent;
  std::cout << (status == kSame ? "ok " : "not ok ") << path << '\n' << diff;
  return status;
}

int compareAll(const std::vector<std::string>& paths) {
  std::size_t failed = 0;
  Status worst = kSame;
  for (const std::string& path : paths) {
    const Status status = compare(path);
    if (status != kSame) ++failed;
    worst = std::max(worst, status);
  }
  std::cout << paths.size() - failed << " passed, " << failed << " failed\n";
  return worst;
}

int print(const std::string& path) {
  const RunResult result = runScenario(path);
  std::cout << result.actual;
  return statusOf(result.outcome);
}

// Files that are malformed, crash or leave something behind stay as they are.
int updateAll(const std::vector<std::string>& paths) {
  Status worst = kSame;
  for (const std::string& path : paths) {
    const RunResult result = runScenario(path);
    Status status = statusOf(result.outcome);
    if (status == kSame && result.actual != result.text) {
      std::ofstream file(path, std::ios::binary);
      if (!(file << result.actual << std::flush)) {
        std::cerr << path << ":1: cannot write the file\n";
        status = kMalformed;
      }
    }
    worst = std::max(worst, status);
  }
  return worst;
}

int usage() {
  std::cerr << kUsage;
  return kMalformed;
}

int run(std::vector<std::string> words) {
  if (words.empty()) return usage();
  const std::string option = words[0].starts_with("--") ? words[0] : "";
  if (!option.empty()) words.erase(words.begin());
  if (option.empty()) return compareAll(words);
  if (option == "--print" && words.size() == 1) return print(words[0]);
  if (option == "--update" && !words.empty()) return updateAll(words);
  return usage();
}

}  // namespace

}  // namespace norvik::scenario

int main(int count, char** words) {
  return norvik::scenario::run({words + 1, words + count});
}
