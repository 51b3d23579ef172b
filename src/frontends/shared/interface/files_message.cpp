// Compares the findings with those at the start.
#include "src/frontends/shared/interface/files_message.h"

#include <algorithm>

namespace norvik {

FilesMessage::FilesMessage(const SettingsChange& change, const InterfaceDescription& interface)
    : change_(change), interface_(interface) {
  for (const FileFinding& finding : change_.findings()) {
    if (finding.damaged) neverRead_.insert(finding.file);
  }
}

// A file that was read once is not replaced by the defaults when it is damaged later.
WindowMessage FilesMessage::message() const {
  std::size_t damaged = 0;
  std::size_t neverRead = 0;
  for (const FileFinding& finding : change_.findings()) {
    if (finding.damaged) ++damaged;
    if (finding.damaged && neverRead_.contains(finding.file)) ++neverRead;
  }
  const auto shown = neverRead == damaged ? window_texts::kDefaultsShown
                     : neverRead == 0     ? window_texts::kLastReadShown
                                          : window_texts::kSomeDefaultsShown;
  return withLabels(damagedMessage(change_.findings(), shown), interface_);
}

std::optional<WindowMessage> FilesMessage::update() {
  std::erase_if(neverRead_, [this](const std::string& file) {
    return std::ranges::none_of(change_.findings(), [&file](const FileFinding& finding) {
      return finding.damaged && finding.file == file;
    });
  });
  WindowMessage current = message();
  if (current.sentence != closed_) closed_.clear();
  if (!closed_.empty()) return std::nullopt;
  return current;
}

std::optional<FileFinding> restorableFile(const SettingsChange& change) {
  const auto found = std::ranges::find_if(change.findings(), [](const FileFinding& finding) {
    return finding.damaged && !finding.copyTime.empty();
  });
  if (found == change.findings().end()) return std::nullopt;
  return *found;
}

bool needsRights(const FileFinding& file) {
  return file.group == Group::server || file.group == Group::limit;
}

}  // namespace norvik
