// One panel a person and computer: a second start only asks the first to come forward.
#pragma once

#include <QString>
#include <functional>
#include <memory>

class QSocketNotifier;

namespace norvik::desktop {

class SingleInstance {
 public:
  // `path` names a lock file in a folder that only the user may write; panels with one path are one panel's
  // instances.
  explicit SingleInstance(const QString& path);
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  enum class Claim {
    first,   // this is the one; it listens from now on
    asked,   // another one is, and was asked to come forward
    silent,  // another one is, and does not answer
  };
  // Waits a few seconds at most for another one to answer.
  Claim claim();

  // Called each time that another start asked.
  std::function<void()> askedForward;

 private:
  bool lock();
  void listen();
  void answer();
  bool ask() const;

  const QString path_;
  int lock_ = -1;
  int socket_ = -1;
  std::unique_ptr<QSocketNotifier> calls_;
};

}  // namespace norvik::desktop
