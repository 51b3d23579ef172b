// A pool of one thread.
#include "src/frontends/desktop/background_work.h"

#include <QRunnable>

namespace norvik::desktop {

BackgroundWork::BackgroundWork() {
  pool_.setMaxThreadCount(1);
}

BackgroundWork::~BackgroundWork() {
  pool_.clear();
  pool_.waitForDone();
}

void BackgroundWork::run(std::function<void()> work, std::function<void()> then) {
  pool_.start(QRunnable::create([this, work = std::move(work), then = std::move(then)] {
    work();
    QMetaObject::invokeMethod(&here_, then, Qt::QueuedConnection);
  }));
}

}  // namespace norvik::desktop
