// Work that may take seconds, beside the window.
#pragma once

#include <QObject>
#include <QThreadPool>
#include <functional>

namespace norvik::desktop {

class BackgroundWork {
 public:
  BackgroundWork();
  // Waits for the work that is under way; nothing is called afterwards.
  ~BackgroundWork();

  // `work` runs on another thread, one after the other; `then` on the main thread.
  void run(std::function<void()> work, std::function<void()> then);

 private:
  QObject here_;
  QThreadPool pool_;
};

}  // namespace norvik::desktop
