// The user's own small files on the simulated computer, over its file system and its faults.
#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>

#include "src/adapters/services/user_state.h"
#include "src/adapters/simulated/clock.h"
#include "src/adapters/simulated/file_system.h"

namespace norvik {

class SimulatedUserState : public UserState {
 public:
  // Borrows all of them.
  SimulatedUserState(FileSystem& fileSystem, const FileFaults& faults, const SimulatedClock& clock);

  std::string userName() override { return "user"; }
  std::time_t now() override { return clock_.timeOfDay(); }
  std::string placeOf(const std::string& name) override;
  FileContent read(const std::string& name) override;
  // Fails if opening for writing, or writing, is set to fail at the place of the file.
  std::string update(
      const std::string& name,
      const std::function<std::optional<std::string>(const std::string& bytes)>& change) override;
  bool remove(const std::string& name) override;
  std::unique_ptr<HeldLock> hold(const std::string& name) override;

 private:
  FileSystem& fileSystem_;
  const FileFaults& faults_;
  const SimulatedClock& clock_;
  std::shared_ptr<std::set<std::string>> held_ = std::make_shared<std::set<std::string>>();
};

}  // namespace norvik
