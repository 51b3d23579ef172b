// The messages above the pages: at most one for each subject, so that what came of Apply never replaces that
// a file is damaged. There is room for one; the latest is shown, and the others wait behind it.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "src/frontends/prefpane/message_line.h"
#include "src/frontends/prefpane/run_loop_sources.h"

namespace norvik::prefpane {

enum class MessageSubject {
  trial,    // a change on trial that its program did not survive
  files,    // damaged ones; stays as long as they are
  inForce,  // the server uses other values than the stored ones
  others,   // somebody else has changed the settings
  outcome,  // of what a person asked for last
};

class MessageArea {
 public:
  // A message of success can be read for that many seconds.
  explicit MessageArea(double width, double passingTime = 12);

  // An NSView of that width.
  void* view() const { return line_.view(); }
  double height() const { return line_.height(); }
  // The NSViews that take the keyboard.
  const std::vector<Handle>& keyViews() const { return line_.buttons(); }

  // An empty message takes the subject's away.
  void show(MessageSubject subject, const WindowMessage& message);
  void clear(MessageSubject subject) { show(subject, {}); }
  // Whether there is anything to see.
  bool isShown() const { return isShown_; }
  // Empty where the subject has none.
  const WindowMessage& message(MessageSubject subject) const;
  // Before everything else, until the outcome takes its place.
  void showProgress(const std::string& sentence, int done, int total);
  // An edit: messages of success have been seen.
  void edited();

  // Whether anybody can see it, at first yes. While nobody can, messages of success stay.
  void setSeen(bool seen);

  // Called when a person presses a button of the subject's message, or has closed it.
  std::function<void(MessageSubject subject, MessageAction action)> acted;
  std::function<void(MessageSubject subject)> closed;
  // Called when there is something to see for the first time, or nothing any more.
  std::function<void()> shownChanged;

 private:
  void present();
  void setShown(bool shown);

  MessageLine line_;
  std::map<MessageSubject, WindowMessage> messages_;
  std::vector<MessageSubject> order_;  // the one that is shown first
  Delay passing_;
  const double passingTime_;
  bool isSeen_ = true;
  bool isShown_ = false;
};

}  // namespace norvik::prefpane
