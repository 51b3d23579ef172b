// The place above the pages for messages: at most one line for each subject, so that what came of Apply never
// hides that a file is damaged.
#pragma once

#include <QWidget>
#include <array>

#include "src/frontends/desktop/message_line.h"

namespace norvik::desktop {

enum class MessageSubject {
  trial,    // a change that is taken back unless somebody keeps it
  files,    // damaged ones; stays as long as they are
  inForce,  // the server uses other values than the stored ones
  others,   // somebody else has changed the settings
  outcome,  // of what a person asked for last
};

class MessageArea : public QWidget {
 public:
  explicit MessageArea(QWidget* parent);

  MessageLine& line(MessageSubject subject) { return *lines_[static_cast<std::size_t>(subject)]; }

  // An edit: messages of success have been seen.
  void edited();

 private:
  std::array<MessageLine*, 5> lines_;
};

}  // namespace norvik::desktop
