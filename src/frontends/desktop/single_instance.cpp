// A lock file that only one panel holds, and a local socket that it listens on. A connection is the whole
// message. The socket has an abstract name, so that it leaves no file behind and its name cannot be too long.
#include "src/frontends/desktop/single_instance.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QFile>
#include <QSocketNotifier>
#include <QThread>
#include <chrono>
#include <cstring>

namespace norvik::desktop {

namespace {

constexpr std::chrono::seconds kPatience{3};
constexpr unsigned long kPauseMilliseconds = 50;
constexpr int kBacklog = 8;

struct Address {
  sockaddr_un name{};
  socklen_t size = 0;
};

Address addressOf(const QString& path) {
  const QByteArray words =
      "norvik-settings-" + QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha1).toHex();
  Address address;
  address.name.sun_family = AF_UNIX;
  std::memcpy(address.name.sun_path + 1, words.constData(), static_cast<std::size_t>(words.size()));
  address.size =
      static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + static_cast<std::size_t>(words.size()));
  return address;
}

int localSocket(int flags) {
  return ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | flags, 0);
}

// Everybody on the computer can use a name of this kind.
bool isOurs(int socket) {
  ucred peer{};
  socklen_t size = sizeof peer;
  return getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == geteuid();
}

}  // namespace

SingleInstance::SingleInstance(const QString& path) : path_(path) {}

SingleInstance::~SingleInstance() {
  requests_.reset();
  if (socket_ != -1) close(socket_);
  if (lock_ != -1) close(lock_);
}

// The system releases the lock when its owner ends, in whatever way. True as well if there is no folder for
// the file: then there is no other instance either.
bool SingleInstance::lock() {
  lock_ = open(QFile::encodeName(path_).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (lock_ == -1 || flock(lock_, LOCK_EX | LOCK_NB) == 0) return true;
  close(lock_);
  lock_ = -1;
  return false;
}

SingleInstance::Claim SingleInstance::claim() {
  const QDeadlineTimer end(kPatience);
  // The first instance may hold the lock and not listen yet, or be about to end.
  do {
    if (lock()) {
      listen();
      return Claim::first;
    }
    if (requestActivation()) return Claim::asked;
    QThread::msleep(kPauseMilliseconds);
  } while (!end.hasExpired());
  return Claim::silent;
}

void SingleInstance::listen() {
  const Address address = addressOf(path_);
  socket_ = localSocket(SOCK_NONBLOCK);
  if (bind(socket_, reinterpret_cast<const sockaddr*>(&address.name), address.size) != 0) return;
  if (::listen(socket_, kBacklog) != 0) return;
  requests_ = std::make_unique<QSocketNotifier>(socket_, QSocketNotifier::Read);
  QObject::connect(requests_.get(), &QSocketNotifier::activated, requests_.get(),
                   [this] { acceptRequest(); });
}

void SingleInstance::acceptRequest() {
  const int caller = accept4(socket_, nullptr, nullptr, SOCK_CLOEXEC);
  if (caller == -1) return;
  const bool ours = isOurs(caller);
  close(caller);
  if (ours && activationRequested) activationRequested();
}

// Does not wait: another program may hold the name and never accept the connection.
bool SingleInstance::requestActivation() const {
  const Address address = addressOf(path_);
  const int first = localSocket(SOCK_NONBLOCK);
  const bool reached =
      connect(first, reinterpret_cast<const sockaddr*>(&address.name), address.size) == 0 && isOurs(first);
  if (first != -1) close(first);
  return reached;
}

}  // namespace norvik::desktop
