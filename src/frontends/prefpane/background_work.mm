// Detached threads, each with a task that says when it has ended, and timers that look for that.
#include "src/frontends/prefpane/background_work.h"

#include <condition_variable>
#include <mutex>
#include <utility>

#include "src/adapters/posix/threads.h"
#import "src/frontends/prefpane/call.h"

namespace norvik::prefpane {

namespace {

constexpr double kBetweenLooksAtTasks = 0.03;  // seconds

NSTimer* timerIn(NSString* mode, const Function& looks) {
  NVKCall* call = [[[NVKCall alloc] initWithCopyOf:&looks] autorelease];
  NSTimer* timer = [NSTimer timerWithTimeInterval:kBetweenLooksAtTasks
                                           target:call
                                         selector:@selector(call)
                                         userInfo:nil
                                          repeats:YES];
  [[NSRunLoop mainRunLoop] addTimer:timer forMode:mode];
  return timer;
}

}  // namespace

struct BackgroundWork::Task {
  std::function<void()> work;
  std::function<void()> then;
  std::mutex mutex;
  std::condition_variable changed;
  bool hasEnded = false;

  void end() {
    const std::scoped_lock lock(mutex);
    hasEnded = true;
    changed.notify_all();
  }
  bool isOver() {
    const std::scoped_lock lock(mutex);
    return hasEnded;
  }
  void await() {
    std::unique_lock lock(mutex);
    changed.wait(lock, [this] { return hasEnded; });
  }
};

BackgroundWork::~BackgroundWork() {
  for (const Handle* timer : {&timer_, &inPanels_}) [static_cast<NSTimer*>(timer->get()) invalidate];
  for (const auto& task : tasks_) task->await();
}

void BackgroundWork::run(std::function<void()> work, std::function<void()> then) {
  const auto task = std::make_shared<Task>();
  task->work = std::move(work);
  task->then = std::move(then);
  tasks_.push_back(task);
  const bool started = startThread([task] {
    task->work();
    task->end();
  });
  if (!started) task->end();
  // A timer that is invalidated stays in each of its modes until the run loop is in that mode, and in that of
  // panels it would stay for long: so that one is kept.
  const Function looks = [this] { look(); };
  if (timer_.get() == nullptr) timer_ = Handle(timerIn(NSDefaultRunLoopMode, looks));
  if (inPanels_.get() == nullptr) inPanels_ = Handle(timerIn(NSModalPanelRunLoopMode, looks));
}

// What is called may begin further work.
void BackgroundWork::look() {
  std::vector<std::shared_ptr<Task>> over;
  std::erase_if(tasks_, [&over](const std::shared_ptr<Task>& task) {
    if (!task->isOver()) return false;
    over.push_back(task);
    return true;
  });
  for (const auto& task : over) task->then();
  if (!tasks_.empty()) return;
  [static_cast<NSTimer*>(timer_.get()) invalidate];
  timer_ = Handle();
}

}  // namespace norvik::prefpane
