// What programs keep for their user from one run to the next: small files in a folder of the user's own, and
// who that is. Main thread; blocks as the file system does, and for a moment where another program writes the
// same file.
#pragma once

#include <cstddef>
#include <ctime>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "src/adapters/services/change_locks.h"
#include "src/adapters/services/settings_files.h"

namespace norvik {

// A longer file is not read, and so not replaced.
inline constexpr std::size_t kMostStateBytes = std::size_t{16} << 20;

class UserState {
 public:
  virtual ~UserState() = default;

  // The name of the user whose program this is; the number of one without a name.
  virtual std::string userName() = 0;
  // The time of day.
  virtual std::time_t now() = 0;
  // The computer's path of the file of that name, for a person.
  virtual std::string placeOf(const std::string& name) = 0;

  // What is there, at most kMostStateBytes. A link is not followed and counts as no file.
  virtual FileContent read(const std::string& name) = 0;

  // Gives the bytes of the file, none where it is missing, to `change`, and makes the file what it returns;
  // leaves it where that is nothing. One program after the other, so that none overwrites what another one
  // adds meanwhile. The file is whole, old or new, whenever the program ends; only the user may read it. Why
  // it could not be done, for a person; empty where it was.
  virtual std::string update(
      const std::string& name,
      const std::function<std::optional<std::string>(const std::string& bytes)>& change) = 0;
  // Removes the file; one that is not there is no failure.
  virtual bool remove(const std::string& name) = 0;

  // A mark that this program lives, by the name of a file; null while another one has it, or where it cannot
  // be made. The system takes it away when the program ends, even if it is killed. Does not wait.
  virtual std::unique_ptr<HeldLock> hold(const std::string& name) = 0;
};

}  // namespace norvik
