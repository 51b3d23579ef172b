// Which message is shown, and for how long.
#include "src/frontends/prefpane/message_area.h"

#include <algorithm>
#include <utility>

namespace norvik::prefpane {

namespace {
constexpr double kPassingTime = 12;  // seconds; how long a message of success can be read
}  // namespace

MessageArea::MessageArea(double width) : line_(width), passing_([this] { edited(); }) {
  line_.acted = [this](MessageAction action) {
    const MessageSubject shown = order_.front();
    if (acted) acted(shown, action);
  };
  line_.closed = [this] {
    const MessageSubject shown = order_.front();
    clear(shown);
    if (closed) closed(shown);
  };
  line_.next = [this] {
    std::rotate(order_.begin(), order_.begin() + 1, order_.end());
    present();
  };
}

void MessageArea::show(MessageSubject subject, const WindowMessage& message) {
  std::erase(order_, subject);
  messages_[subject] = message;
  // What is in force comes after everything that has just happened.
  const bool isLast = subject == MessageSubject::inForce;
  if (!message.isEmpty()) order_.insert(isLast ? order_.end() : order_.begin(), subject);
  present();
}

const WindowMessage& MessageArea::message(MessageSubject subject) const {
  static const WindowMessage none;
  const auto found = messages_.find(subject);
  return found != messages_.end() ? found->second : none;
}

void MessageArea::showProgress(const std::string& sentence, int done, int total) {
  passing_.stop();
  setShown(true);
  line_.showProgress(sentence, done, total);
}

void MessageArea::setShown(bool shown) {
  if (std::exchange(isShown_, shown) != shown && shownChanged) shownChanged();
}

void MessageArea::present() {
  passing_.stop();
  setShown(!order_.empty());
  if (order_.empty()) return line_.hide();
  const WindowMessage& shown = messages_[order_.front()];
  line_.showMessage(shown, order_.size());
  if (shown.isPassing()) passing_.start(kPassingTime);
}

void MessageArea::edited() {
  for (auto& [subject, message] : messages_) {
    if (!message.isEmpty() && message.isPassing()) {
      message = {};
      std::erase(order_, subject);
    }
  }
  present();
}

}  // namespace norvik::prefpane
