// Files in the user's state folder; marks as names.
#include "src/adapters/simulated/user_state.h"

#include <utility>

namespace norvik {

namespace {

constexpr unsigned kOwnersMode = 0600;

class HeldName : public HeldLock {
 public:
  HeldName(std::shared_ptr<std::set<std::string>> held, std::string name)
      : held_(std::move(held)), name_(std::move(name)) {}
  ~HeldName() override { held_->erase(name_); }

 private:
  std::shared_ptr<std::set<std::string>> held_;
  std::string name_;
};

}  // namespace

SimulatedUserState::SimulatedUserState(FileSystem& fileSystem, const FileFaults& faults,
                                       const SimulatedClock& clock)
    : fileSystem_(fileSystem), faults_(faults), clock_(clock) {}

std::string SimulatedUserState::placeOf(const std::string& name) {
  return fileSystem_.home() + "/.local/state/norvik/" + name;
}

FileContent SimulatedUserState::read(const std::string& name) {
  const std::string place = placeOf(name);
  if (fileSystem_.isDirectory(place)) return {FileKind::directory, "", "Is a directory"};
  const auto file = fileSystem_.find(place);
  if (file == nullptr) return {};
  if (faults_.has(FileOperation::openRead, place)) return {FileKind::notAllowed, "", "Permission denied"};
  if (faults_.has(FileOperation::read, place)) return {FileKind::unreadable, "", "Input/output error"};
  if (file->bytes.size() > kMostStateBytes) return {FileKind::tooLarge, "", "File too large"};
  return {FileKind::regular, file->bytes, ""};
}

std::string SimulatedUserState::update(
    const std::string& name,
    const std::function<std::optional<std::string>(const std::string& bytes)>& change) {
  const std::string place = placeOf(name);
  fileSystem_.addDirectory(place.substr(0, place.rfind('/')));
  const FileContent now = read(name);
  if (now.kind != FileKind::regular && now.kind != FileKind::missing) return now.reason;
  auto bytes = change(now.bytes);
  if (!bytes) return "";
  if (faults_.has(FileOperation::openWrite, place)) return "Permission denied";
  if (faults_.has(FileOperation::write, place)) return "No space left on device";
  const auto file = fileSystem_.create(place, FileSystem::kUser);
  if (file == nullptr) return "Permission denied";
  file->bytes = std::move(*bytes);
  file->mode = kOwnersMode;
  return "";
}

bool SimulatedUserState::remove(const std::string& name) {
  if (fileSystem_.find(placeOf(name)) != nullptr) fileSystem_.remove(placeOf(name));
  return true;
}

std::unique_ptr<HeldLock> SimulatedUserState::hold(const std::string& name) {
  return held_->insert(name).second ? std::make_unique<HeldName>(held_, name) : nullptr;
}

}  // namespace norvik
