// Files, links and scripts below the root.
#include "tests/adapters/contract/folder_under_test.h"

#include <sys/stat.h>

#include <condition_variable>
#include <csignal>
#include <filesystem>
#include <mutex>
#include <stop_token>
#include <thread>

#include "src/adapters/posix/change_locks.h"
#include "src/server/mac/text/join.h"

namespace norvik {

namespace fs = std::filesystem;

namespace {

// A file of the kernel's that may be read and not written, whatever the rights of the reader.
constexpr const char* kReadOnlyFile = "/sys/devices/system/cpu/possible";

}  // namespace

// A front end that holds the lock for a time, or until it is gone.
class FolderUnderTest::Elsewhere {
 public:
  Elsewhere(const std::string& root, std::chrono::milliseconds time)
      : locks_(RootFolder(root), [](const auto&) {}),
        lock_(locks_.lock(kPatience)),
        holder_([this, time](const std::stop_token& stop) { holdFor(time, stop); }) {}

 private:
  void holdFor(std::chrono::milliseconds time, const std::stop_token& stop) {
    std::mutex mutex;
    std::unique_lock waiting(mutex);
    std::condition_variable_any ended;
    ended.wait_for(waiting, stop, time, [] { return false; });
    lock_.reset();
  }

  PosixChangeLocks locks_;
  std::unique_ptr<HeldLock> lock_;
  std::jthread holder_;
};

FolderUnderTest::FolderUnderTest() {
  folder_.putScript("/bin/mv", "exec /bin/mv \"$1\" \"$NORVIK_ROOT$2\" \"$NORVIK_ROOT$3\"");
  folder_.putScript("/bin/chmod", "exec /bin/chmod \"$1\" \"$NORVIK_ROOT$2\"");
}

FolderUnderTest::~FolderUnderTest() = default;

void FolderUnderTest::putFile(const std::string& path, const std::string& bytes) {
  folder_.put(path, bytes);
}

void FolderUnderTest::makeDirectory(const std::string& path) {
  fs::create_directories(folder_.onDisk(path));
}

std::optional<std::string> FolderUnderTest::bytesOf(const std::string& path) {
  return folder_.read(path);
}

bool FolderUnderTest::isDirectory(const std::string& path) {
  return fs::is_directory(folder_.onDisk(path));
}

std::optional<unsigned> FolderUnderTest::modeOf(const std::string& path) {
  struct stat status {};
  if (::stat(folder_.onDisk(path).c_str(), &status) != 0) return std::nullopt;
  return status.st_mode & 07777U;
}

// The rights of a file do not stop the super-user, who may well run the tests; a link to itself does.
void FolderUnderTest::putUnreadable(const std::string& path) {
  link(folder_.onDisk(path), path);
}

void FolderUnderTest::putReadOnly(const std::string& path) {
  link(kReadOnlyFile, path);
}

void FolderUnderTest::putFull(const std::string& path) {
  link("/dev/full", path);
}

void FolderUnderTest::link(const std::string& target, const std::string& path) {
  fs::remove(folder_.onDisk(path));
  fs::create_symlink(target, folder_.onDisk(path));
}

std::string FolderUnderTest::lastBundle() const {
  return "/Applications/" + std::to_string(applications_) + ".app";
}

int32_t FolderUnderTest::startApplication(const ApplicationKind& kind) {
  ++applications_;
  return folder_.start(
      {folder_.onDisk(folder_.putApplication(lastBundle(), kind.type + kind.creator, kind.identifier)),
       "600"});
}

int32_t FolderUnderTest::startOutsideOfBundles() {
  return folder_.start({"/bin/sleep", "600"});
}

void FolderUnderTest::end(int32_t pid) {
  folder_.end(pid);
}

// The programs do not expect the signal, so that it ends them.
bool FolderUnderTest::wasSignalled(int32_t pid) {
  return folder_.endedBy(pid) == SIGUSR2;
}

bool FolderUnderTest::isUndisturbed(int32_t pid) {
  return folder_.stillRuns(pid);
}

void FolderUnderTest::putTool(const std::string& path, const std::vector<std::string>& arguments,
                              const std::string& output) {
  folder_.put(path + ".output", output);
  folder_.putScript(
      path, "[ \"$*\" = '" + joined(arguments, " ") + "' ] && exec cat \"$NORVIK_ROOT" + path + ".output\"");
}

void FolderUnderTest::putFailingTool(const std::string& path, int status, const std::string& words) {
  folder_.putScript(path, "echo '" + words + "' >&2; exit " + std::to_string(status));
}

void FolderUnderTest::putKilledTool(const std::string& path, int signal) {
  folder_.putScript(path, "kill -" + std::to_string(signal) + " $$");
}

void FolderUnderTest::putSlowTool(const std::string& path, std::chrono::milliseconds duration) {
  folder_.putScript(path, "exec sleep " + std::to_string(std::chrono::duration<double>(duration).count()));
}

void FolderUnderTest::refuseTool(const std::string& path) {
  fs::remove(folder_.onDisk(path));
}

void FolderUnderTest::waitForTools() {
  ASSERT_TRUE(interfaces().services.tools.wait(std::chrono::seconds(10)));
}

void FolderUnderTest::holdLockElsewhere(std::chrono::milliseconds time) {
  elsewhere_ = std::make_unique<Elsewhere>(folder_.path(), time);
}

std::chrono::microseconds FolderUnderTest::now() {
  return std::chrono::duration_cast<std::chrono::microseconds>(
      std::chrono::steady_clock::now().time_since_epoch());
}

}  // namespace norvik
