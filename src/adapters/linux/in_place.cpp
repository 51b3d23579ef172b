// Write first, then cut: the new text goes over the old one in a single write, with line feeds up to the old
// length where it is shorter, and only then the file gets its length.
#include "src/adapters/linux/in_place.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>
#include <utility>

#include "src/adapters/posix/descriptors.h"

namespace norvik {

namespace {

using namespace std::chrono_literals;

// A longer file is no text that a reader takes, so that there is nothing whole to keep: only what is written
// over can be put back, and no line feeds are written up to its length.
constexpr std::size_t kMaxKeptBytes = std::size_t{64} << 20;

// How long to wait for readers to close the file, and how long between two looks. Some keep it open for ever.
constexpr std::chrono::microseconds kLeasePatience = 100ms;
constexpr std::chrono::microseconds kLeasePause = 100us;

// Calls again what a signal interrupted.
template <typename Call>
auto uninterrupted(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

class FileInPlace {
 public:
  explicit FileInPlace(const std::string& path);
  // Puts the old text back, or removes a new file, where `replace` has not succeeded.
  ~FileInPlace();
  FileInPlace(const FileInPlace&) = delete;
  FileInPlace& operator=(const FileInPlace&) = delete;

  bool replace(std::string_view text);

 private:
  std::size_t size() const;
  void keepOthersOut();
  bool keepOld(std::size_t newSize);
  bool reserve(std::size_t size);
  bool write(std::string_view bytes);
  bool flush();
  bool cut(std::size_t size);
  void putBack();
  void removeNew();

  std::string path_;
  Descriptor file_;
  bool created_ = false;
  bool done_ = false;
  std::string old_;          // the old text, or as much of it as is written over
  std::size_t oldSize_ = 0;  // of the file
  std::size_t end_ = 0;      // where what was written here ends; 0 before anything was
};

FileInPlace::FileInPlace(const std::string& path)
    : path_(path), file_(openToChange(path, WhereMissing::fail)) {
  const bool missing = !file_ && errno == ENOENT;
  if (missing) file_ = openToChange(path, WhereMissing::create);
  // Somebody else may have created it meanwhile, and then it is not ours to remove.
  created_ = missing && file_ && size() == 0;
}

FileInPlace::~FileInPlace() {
  if (done_ || !file_) return;
  created_ ? removeNew() : putBack();
}

bool FileInPlace::replace(std::string_view text) {
  if (!file_) return false;
  keepOthersOut();
  if (!keepOld(text.size())) return false;
  const std::size_t length = oldSize_ <= kMaxKeptBytes ? std::max(text.size(), oldSize_) : text.size();
  old_.reserve(length);  // putting it back must not fail for want of memory
  std::string block(text);
  block.resize(length, '\n');
  // The cut comes last: whatever fails before it, all that the file had behind the new text is still there.
  done_ = reserve(length) && write(block) && flush() && cut(text.size());
  return done_;
}

std::size_t FileInPlace::size() const {
  struct stat status {};
  return ::fstat(file_.number(), &status) == 0 ? static_cast<std::size_t>(status.st_size) : 0;
}

// The system does not separate reading from writing: a reader can see a mixture of the old and the new text.
// A write lease makes other programs wait when they open the file. It is granted only while no other program
// has the file open, and ends with the descriptor or the process. Not every file system supports leases.
void FileInPlace::keepOthersOut() {
  // Sent when another program waits for the file. It is ignored; SIGIO, the default, would end the program.
  ::fcntl(file_.number(), F_SETSIG, SIGURG);
  for (auto waited = 0us; waited < kLeasePatience; waited += kLeasePause) {
    if (::fcntl(file_.number(), F_SETLEASE, F_WRLCK) == 0 || errno != EAGAIN) return;
    std::this_thread::sleep_for(kLeasePause);
  }
}

bool FileInPlace::keepOld(std::size_t newSize) {
  struct stat status {};
  if (::fstat(file_.number(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
  oldSize_ = static_cast<std::size_t>(status.st_size);
  old_.resize(oldSize_ <= kMaxKeptBytes ? oldSize_ : std::min(oldSize_, newSize));
  std::size_t done = 0;
  while (done < old_.size()) {
    const ssize_t count = uninterrupted([&] {
      return ::pread(file_.number(), old_.data() + done, old_.size() - done, static_cast<off_t>(done));
    });
    if (count < 0) return false;
    if (count == 0) break;  // somebody else has cut it meanwhile
    done += static_cast<std::size_t>(count);
  }
  old_.resize(done);
  return true;
}

// A full disk, a quota and a limit of the process show here, before a byte is written.
bool FileInPlace::reserve(std::size_t size) {
  rlimit limit{};
  if (::getrlimit(RLIMIT_FSIZE, &limit) == 0 && size > limit.rlim_cur) {
    errno = EFBIG;  // as a write would say
    return false;
  }
  if (size == 0) return true;
  const auto reserved = uninterrupted(
      [&] { return ::fallocate(file_.number(), FALLOC_FL_KEEP_SIZE, 0, static_cast<off_t>(size)); });
  return reserved == 0 || errno == EOPNOTSUPP || errno == ENOSYS;
}

bool FileInPlace::write(std::string_view bytes) {
  for (std::size_t done = 0; done < bytes.size();) {
    const ssize_t count = uninterrupted([&] {
      return ::pwrite(file_.number(), bytes.data() + done, bytes.size() - done, static_cast<off_t>(done));
    });
    if (count <= 0) return false;
    done += static_cast<std::size_t>(count);
    end_ = std::max(end_, done);
  }
  return true;
}

// Some file systems report what became of a write only at the closing, which is asked of a duplicate, as long
// as there is a descriptor to put the old text back with. The sync also keeps a power cut from bringing the
// new length to the disk and not the new text.
bool FileInPlace::flush() {
  if (!syncFile(file_.number())) return false;
  const int duplicate = ::fcntl(file_.number(), F_DUPFD_CLOEXEC, 0);
  return duplicate >= 0 && ::close(duplicate) == 0;
}

// Also cuts off what somebody else has appended meanwhile, which belonged to the old text.
bool FileInPlace::cut(std::size_t wanted) {
  if (size() <= wanted) return true;
  return uninterrupted([&] { return ::ftruncate(file_.number(), static_cast<off_t>(wanted)); }) == 0;
}

// The same way as the new text: written over it, then cut. What reaches beyond all that was written here is
// somebody else's, and stays.
void FileInPlace::putBack() {
  if (end_ == 0) return;
  const std::size_t now = size();
  const bool onlyOurs = now <= std::max(end_, oldSize_);
  if (onlyOurs && oldSize_ <= kMaxKeptBytes) old_.resize(std::max(now, old_.size()), '\n');
  if (write(old_) && onlyOurs) cut(oldSize_);
  syncFile(file_.number());
}

// The path may be a link to the file.
void FileInPlace::removeNew() {
  std::error_code failed;
  const std::filesystem::path target = std::filesystem::canonical(path_, failed);
  struct stat ours {};
  struct stat there {};
  if (failed || size() > end_ || ::fstat(file_.number(), &ours) != 0 || ::stat(target.c_str(), &there) != 0)
    return;
  if (ours.st_dev == there.st_dev && ours.st_ino == there.st_ino) ::unlink(target.c_str());
}

}  // namespace

bool writeInPlace(const std::string& path, std::string_view text) {
  const WriteSignalGuard guard;
  return FileInPlace(path).replace(text);
}

}  // namespace norvik
