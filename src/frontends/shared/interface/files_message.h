// The message about damaged files that both windows show: which one, and until when. Knows no toolkit.
#pragma once

#include <optional>
#include <set>
#include <string>

#include "src/frontends/shared/interface/window_messages.h"

namespace norvik {

class FilesMessage {
 public:
  // Borrows both. The transaction has looked: a file that is damaged now was never read.
  FilesMessage(const SettingsChange& change, const InterfaceDescription& interface);

  // The message as the findings are now; empty if there are none. Nothing while a person has closed the same
  // message.
  std::optional<WindowMessage> update();
  // A person has closed the message.
  void close() { closed_ = message().sentence; }

 private:
  WindowMessage message() const;

  const SettingsChange& change_;
  const InterfaceDescription& interface_;
  std::set<std::string> neverRead_;  // files that have been damaged since the start
  std::string closed_;               // the sentence that a person has closed
};

// The first damaged file with a copy to restore; nothing if there is none.
std::optional<FileFinding> restorableFile(const SettingsChange& change);
// Whether restoring it needs administrator rights.
bool needsRights(const FileFinding& file);

}  // namespace norvik
