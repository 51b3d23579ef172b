// Keeps an answer to "Can they reach me?" for a window: looks when the server, its ports or its settings are
// different from what they were, and when a person asks. Looking takes a connection to the server, so it is
// not done by the clock. Knows no toolkit; main thread only, but for the network, which is asked beside it.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "src/frontends/shared/reach/ladder.h"

namespace norvik {

// Calls `work` on another thread, and afterwards `then` on the main thread. Where `work` cannot be done,
// `then` is called all the same.
using RunInBackground = std::function<void(std::function<void()> work, std::function<void()> then)>;

class ReachWatch {
 public:
  // Pane, description and services outlive it; the services' network also the work that is under way. Does
  // not look yet.
  ReachWatch(const NVKServerPrefs& pane, const InterfaceDescription& interface, ComputerServices services,
             RunInBackground background);
  // A look that is under way asks the network nothing more and reports nothing.
  ~ReachWatch();
  ReachWatch(const ReachWatch&) = delete;
  ReachWatch& operator=(const ReachWatch&) = delete;

  // Looks if what is in force is different from what it was. Somebody has just seen it.
  void follow(const ServerInForce& inForce);
  // Looks, or looks once more after what is under way.
  void look();
  // While nobody sees the window, nobody looks; afterwards what was missed is made up for. At first they see
  // it.
  void setSeen(bool isSeen);

  bool isLooking() const { return look_ != nullptr; }
  // What was found last, for each service; none before.
  const std::vector<ServiceReach>& found() const { return found_; }
  // The same; none while a look or a change of the server is under way.
  std::vector<ServiceReach> known() const;
  // State and addresses of what is known, in one line.
  std::string line() const;

  // Called when a look begins, and when it has ended.
  std::function<void()> changed;

 private:
  struct Look;
  void begin();
  void end();
  void stop();

  const NVKServerPrefs& pane_;
  const InterfaceDescription& interface_;
  ComputerServices services_;
  RunInBackground background_;
  std::vector<ServiceReach> found_;
  std::string inForce_;         // when somebody looked
  std::shared_ptr<Look> look_;  // the one that is under way; null for none
  bool isOutdated_ = false;     // there is something to look at after it, or once the window is seen
  bool isSeen_ = true;
};

}  // namespace norvik
