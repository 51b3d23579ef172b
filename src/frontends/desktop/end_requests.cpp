// A pipe that a signal handler writes to, since a handler may do hardly anything else.
#include "src/frontends/desktop/end_requests.h"

#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <csignal>

namespace norvik::desktop {

namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};
constexpr std::size_t kManyRequests = 64;

volatile std::sig_atomic_t pipeEnd = -1;

void tell(int /*signal*/) {
  const int saved = errno;
  if (pipeEnd != -1) static_cast<void>(!::write(pipeEnd, "", 1));
  errno = saved;
}

void handle(void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  for (const int signal : kSignals) ::sigaction(signal, &action, nullptr);
}

}  // namespace

EndRequests::EndRequests() {
  std::array<int, 2> ends{-1, -1};
  if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
  reading_ = Descriptor(ends[0]);
  writing_ = Descriptor(ends[1]);
  pipeEnd = ends[1];
  notifier_ = std::make_unique<QSocketNotifier>(ends[0], QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] {
    std::array<char, kManyRequests> bytes;
    static_cast<void>(!::read(reading_.number(), bytes.data(), bytes.size()));
    if (requested) requested();
  });
  handle(tell);
}

EndRequests::~EndRequests() {
  handle(SIG_DFL);
  pipeEnd = -1;
}

}  // namespace norvik::desktop
