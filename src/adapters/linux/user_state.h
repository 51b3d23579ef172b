// The user's own small files below the state folder, and the lock files beside them.
#pragma once

#include <sys/types.h>

#include <memory>
#include <optional>
#include <string>

#include "src/adapters/posix/root_folder.h"
#include "src/adapters/services/user_state.h"

namespace norvik {

class LinuxUserState : public UserState {
 public:
  // `stateFolder` is the computer's path, made when something is written; empty for none, and then nothing
  // can be. `user` is whose program this is.
  LinuxUserState(RootFolder root, std::string stateFolder, uid_t user);

  std::string userName() override;
  std::time_t now() override;
  std::string placeOf(const std::string& name) override;
  FileContent read(const std::string& name) override;
  std::string update(
      const std::string& name,
      const std::function<std::optional<std::string>(const std::string& bytes)>& change) override;
  bool remove(const std::string& name) override;
  std::unique_ptr<HeldLock> hold(const std::string& name) override;

 private:
  std::string onDisk(const std::string& name) const;
  bool makeStateFolder() const;

  RootFolder root_;
  std::string folder_;
  uid_t user_;
};

}  // namespace norvik
