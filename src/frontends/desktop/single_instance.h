// One panel for each person and computer: a second start only brings the first one to the front.
#pragma once

#include <QString>
#include <functional>
#include <memory>

class QSocketNotifier;

namespace norvik::desktop {

class SingleInstance {
 public:
  // `path` names a lock file in a folder that only the user may write. Panels that are given the same path
  // are instances of one panel.
  explicit SingleInstance(const QString& path);
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  enum class Claim {
    first,   // this is the first instance; it listens from now on
    asked,   // there is another one, and it was asked to come to the front
    silent,  // there is another one, and it does not respond
  };
  // Waits at most three seconds for another instance to respond.
  Claim claim();

  // Called each time that another start asks this instance to come to the front.
  std::function<void()> activationRequested;

 private:
  bool lock();
  void listen();
  void acceptRequest();
  bool requestActivation() const;

  const QString path_;
  int lock_ = -1;
  int socket_ = -1;
  std::unique_ptr<QSocketNotifier> requests_;
};

}  // namespace norvik::desktop
