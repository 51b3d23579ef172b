// A second start: it finds the first one, and it never waits for ever on a name that somebody else holds.
#include "src/frontends/desktop/single_instance.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <QCoreApplication>
#include <QCryptographicHash>
#include <cstring>
#include <future>

#include "src/adapters/posix/descriptors.h"
#include "tests/support/temporary_folder.h"

namespace norvik::desktop {
namespace {

class SingleInstanceTest : public testing::Test {
 protected:
  QString path() const { return QString::fromStdString(folder.path() / "settings.lock"); }

  // The abstract name of the instance, which any program can take.
  sockaddr_un name() const {
    const QByteArray words =
        "norvik-settings-" + QCryptographicHash::hash(path().toUtf8(), QCryptographicHash::Sha1).toHex();
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path + 1, words.constData(), static_cast<std::size_t>(words.size()));
    size =
        static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + static_cast<std::size_t>(words.size()));
    return address;
  }
  static Descriptor aSocket() {
    return Descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  }

  // Takes the name, and lets so many wait for it that there is space for no more.
  void takeNameAndFillIt() {
    const sockaddr_un address = name();
    listener = aSocket();
    ASSERT_EQ(::bind(listener.number(), reinterpret_cast<const sockaddr*>(&address), size), 0);
    ASSERT_EQ(::listen(listener.number(), 0), 0);
    for (;;) {
      waiting.push_back(aSocket());
      if (::connect(waiting.back().number(), reinterpret_cast<const sockaddr*>(&address), size) != 0) break;
    }
    ASSERT_EQ(errno, EAGAIN);
  }

  void holdLock() {
    lock = Descriptor(::open(path().toUtf8().constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    ASSERT_EQ(::flock(lock.number(), LOCK_EX | LOCK_NB), 0);
  }

  TemporaryFolder folder;
  mutable socklen_t size = 0;
  Descriptor listener, lock;
  std::vector<Descriptor> waiting;
};

TEST_F(SingleInstanceTest, DoesNotWaitForEverOnANameThatSomebodyElseHolds) {
  takeNameAndFillIt();
  holdLock();
  auto claim = std::async(std::launch::async, [this] { return SingleInstance(path()).claim(); });
  const bool returned = claim.wait_for(kPatience) == std::future_status::ready;
  EXPECT_TRUE(returned);
  listener.reset();  // a connection that waits fails now
  EXPECT_EQ(claim.get(), SingleInstance::Claim::silent);
}

TEST_F(SingleInstanceTest, IsTheFirstEvenIfSomebodyElseHoldsTheName) {
  takeNameAndFillIt();
  EXPECT_EQ(SingleInstance(path()).claim(), SingleInstance::Claim::first);
}

TEST_F(SingleInstanceTest, TheSecondAsksTheFirst) {
  SingleInstance first(path());
  ASSERT_EQ(first.claim(), SingleInstance::Claim::first);
  int asked = 0;
  first.activationRequested = [&asked] { ++asked; };
  EXPECT_EQ(SingleInstance(path()).claim(), SingleInstance::Claim::asked);
  EXPECT_TRUE(eventually([&asked] {
    QCoreApplication::processEvents();
    return asked == 1;
  }));
}

}  // namespace
}  // namespace norvik::desktop
