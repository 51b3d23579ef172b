// The one computer.
#include "tests/adapters/apple/doubles/doubles.h"

#include <memory>

namespace norvik::doubles {

namespace {

std::unique_ptr<Mac> current = std::make_unique<Mac>();

}  // namespace

Mac& mac() {
  return *current;
}

void reset() {
  forgetTimers();
  forgetObjects();
  forgetAuthorizations();
  current = std::make_unique<Mac>();
}

std::vector<std::string> faults() {
  std::vector<std::string> all = current->violations;
  for (const auto& leaked : {leakedObjects(), leakedAuthorizations()})
    all.insert(all.end(), leaked.begin(), leaked.end());
  for (const pid_t pid : current->launched) all.push_back("left as a zombie: " + std::to_string(pid));
  return all;
}

void record(const std::string& call) {
  if (current->records) current->calls.push_back(call);
}

void violate(const std::string& what) {
  current->violations.push_back(what);
}

}  // namespace norvik::doubles
