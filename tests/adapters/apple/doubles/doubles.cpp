// The one computer.
#include "tests/adapters/apple/doubles/doubles.h"

#include <memory>

namespace norvik::doubles {

namespace {

std::unique_ptr<Mac> current = std::make_unique<Mac>();
std::recursive_mutex mutex;

}  // namespace

Mac& mac() {
  return *current;
}

std::recursive_mutex& guard() {
  return mutex;
}

void reset() {
  forgetTimers();
  forgetBundles();
  forgetObjects();
  forgetAuthorizations();
  current = std::make_unique<Mac>();
}

std::vector<std::string> faults() {
  const std::lock_guard lock(mutex);
  std::vector<std::string> all = current->violations;
  for (const auto& leaked : {leakedObjects(), leakedAuthorizations()})
    all.insert(all.end(), leaked.begin(), leaked.end());
  for (const pid_t pid : current->launched) all.push_back("left as a zombie: " + std::to_string(pid));
  return all;
}

void record(const std::string& call) {
  const std::lock_guard lock(mutex);
  if (current->records) current->calls.push_back(call);
}

void violate(const std::string& what) {
  const std::lock_guard lock(mutex);
  current->violations.push_back(what);
}

}  // namespace norvik::doubles
