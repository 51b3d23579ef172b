// A library to be preloaded: it makes chosen file operations of a program, and of the programs that it
// starts, fail or end the program, so that a test sees what a full disk, a broken one or a kill leaves
// behind. It knows nothing of what it is loaded into. From a test, failing_calls.h is the way to it; by hand:
//
//   LD_PRELOAD=build/dev/lib/libnorvik_failing_calls.so NORVIK_FAULT_CALL=fsync NORVIK_FAULT_EFFECT=EIO sh
//
// NORVIK_FAULT_CALL: the operations that count, with commas between them; "all" for every one:
//   open-read, open-write   opening for reading alone, and for writing
//   read                    read, pread
//   write                   write, pwrite, writev; fwrite to a stream without a buffer
//   fallocate, ftruncate    also truncate
//   fsync                   also fdatasync
//   close                   of a file that was open for writing; also fclose
//   rename, unlink, mkdir, chmod, chown
// NORVIK_FAULT_PATH: a shell pattern for the path of the file, where "*" also means slashes: "*/svr.cfg".
//   Every file where it is not set. A path that is given to a call is taken as it is written, behind the
//   current folder where it is relative; of a rename both paths count.
// NORVIK_FAULT_NUMBER: which of the operations that count, in one process: "3" is the third, "3+" the third
//   and all after it. "1+" where it is not set.
// NORVIK_FAULT_EFFECT: what happens at that operation and, after a comma, at the next one, and so on; of "3+"
//   the last one repeats. Nothing where it is not set.
//   ENOSPC and the like     it fails with this error and does nothing; a close does close
//   SHORT                   a write takes half of its bytes
//   KILL                    the program is ended before it
//   STOP                    the program stands still before it, until it gets SIGCONT
//   NONE                    nothing
// NORVIK_FAULT_PROGRAM: the file name of the program that this is for, such as "mv"; all where it is not set.
// NORVIK_FAULT_LOG: a file that gets a line for each operation that counts: the operation and the path.
//
// What the C library calls inside itself is not seen, such as the writing out of a stream that has a buffer.
#include <dlfcn.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <stdio_ext.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace {

using Path = std::array<char, PATH_MAX + 1>;

struct ErrorName {
  std::string_view name;
  int number;
};
constexpr ErrorName kErrors[] = {
    {"EACCES", EACCES},         {"EBUSY", EBUSY},   {"EDQUOT", EDQUOT}, {"EEXIST", EEXIST},
    {"EFBIG", EFBIG},           {"EINTR", EINTR},   {"EINVAL", EINVAL}, {"EIO", EIO},
    {"EMFILE", EMFILE},         {"ENOENT", ENOENT}, {"ENOMEM", ENOMEM}, {"ENOSPC", ENOSPC},
    {"EOPNOTSUPP", EOPNOTSUPP}, {"EPERM", EPERM},   {"EROFS", EROFS},   {"EXDEV", EXDEV}};

struct Effect {
  enum class Kind { none, fail, shorten } kind = Kind::none;
  int error = 0;
};

std::atomic<long> counted = 0;

// The function that would have been called without this library.
template <typename Function>
Function* next(const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

std::string_view setting(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string_view() : value;
}

// Takes the first of several words between commas.
std::string_view takeWord(std::string_view& words) {
  const std::string_view word = words.substr(0, words.find(','));
  words.remove_prefix(std::min(word.size() + 1, words.size()));
  return word;
}

bool isChosenCall(std::string_view call) {
  for (std::string_view words = setting("NORVIK_FAULT_CALL"); !words.empty();) {
    const std::string_view word = takeWord(words);
    if (word == call || word == "all") return true;
  }
  return false;
}

bool isChosenProgram() {
  const std::string_view chosen = setting("NORVIK_FAULT_PROGRAM");
  return chosen.empty() || chosen == ::program_invocation_short_name;
}

bool isChosenPath(const char* path) {
  const char* pattern = std::getenv("NORVIK_FAULT_PATH");
  return pattern == nullptr || ::fnmatch(pattern, path, 0) == 0;
}

void pathOf(int file, Path& path) {
  std::array<char, 64> link{};
  std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", file);
  path.fill('\0');
  if (::readlink(link.data(), path.data(), PATH_MAX) < 0) path.fill('\0');
}

void absolute(const char* name, Path& path) {
  Path folder;
  folder.fill('\0');
  const bool relative = name[0] != '/' && ::getcwd(folder.data(), PATH_MAX) != nullptr;
  std::snprintf(path.data(), path.size(), "%s%s%s", folder.data(), relative ? "/" : "", name);
}

void note(std::string_view call, const char* path) {
  const char* log = std::getenv("NORVIK_FAULT_LOG");
  if (log == nullptr) return;
  std::array<char, PATH_MAX + 64> line{};
  const int length =
      std::snprintf(line.data(), line.size(), "%.*s %s\n", static_cast<int>(call.size()), call.data(), path);
  const long file = ::syscall(SYS_openat, AT_FDCWD, log, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
  ::syscall(SYS_write, file, line.data(), length);
  ::syscall(SYS_close, file);
}

// The word for the operation with this number; empty where it is let alone.
std::string_view effectWord(long number) {
  const char* first = std::getenv("NORVIK_FAULT_NUMBER");
  char* end = nullptr;
  const long begin = first == nullptr ? 1 : std::strtol(first, &end, 10);
  const bool repeats = first == nullptr || *end == '+';
  std::string_view words = setting("NORVIK_FAULT_EFFECT");
  if (number < begin) return {};
  std::string_view word = takeWord(words);
  for (long at = begin; at < number; ++at) {
    if (words.empty()) return repeats ? word : std::string_view();
    word = takeWord(words);
  }
  return word;
}

// Counts an operation and says what happens to it.
Effect effectOn(std::string_view call, const char* path) {
  const int before = errno;
  Effect effect;
  if (isChosenCall(call) && isChosenProgram() && isChosenPath(path)) {
    note(call, path);
    const std::string_view word = effectWord(++counted);
    if (word == "KILL") ::syscall(SYS_kill, ::getpid(), SIGKILL);
    if (word == "STOP") ::syscall(SYS_kill, ::getpid(), SIGSTOP);
    if (word == "SHORT") effect.kind = Effect::Kind::shorten;
    for (const ErrorName& error : kErrors)
      if (error.name == word) effect = {Effect::Kind::fail, error.number};
    if (effect.kind == Effect::Kind::none && !word.empty() && word != "NONE" && word != "STOP") {
      std::fputs("failing_calls: unknown NORVIK_FAULT_EFFECT\n", stderr);
      ::_exit(125);
    }
  }
  errno = before;
  return effect;
}

// Whether the operation fails; errno is then set.
bool fails(const Effect& effect) {
  if (effect.kind != Effect::Kind::fail) return false;
  errno = effect.error;
  return true;
}

bool failsOn(std::string_view call, const char* name) {
  Path path;
  absolute(name, path);
  return fails(effectOn(call, path.data()));
}

bool failsOn(std::string_view call, int file) {
  Path path;
  pathOf(file, path);
  return fails(effectOn(call, path.data()));
}

// One operation, whichever of the paths is the chosen one.
bool renameFails(const char* from, const char* to) {
  Path path;
  absolute(from, path);
  return failsOn("rename", isChosenPath(path.data()) ? from : to);
}

bool isForWriting(int file) {
  const int before = errno;
  const int flags = ::fcntl(file, F_GETFL);
  errno = before;
  return flags >= 0 && (flags & O_ACCMODE) != O_RDONLY;
}

bool openFails(const char* name, int flags) {
  return failsOn((flags & O_ACCMODE) == O_RDONLY ? "open-read" : "open-write", name);
}

// Writes through the function, which takes the number of bytes.
template <typename Write>
ssize_t written(int file, std::size_t size, Write write) {
  Path path;
  pathOf(file, path);
  const Effect effect = effectOn("write", path.data());
  if (fails(effect)) return -1;
  return write(effect.kind == Effect::Kind::shorten ? size / 2 : size);
}

mode_t modeIn(int flags, va_list arguments) {
  return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

}  // namespace

extern "C" {

int open(const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = modeIn(flags, arguments);
  va_end(arguments);
  if (openFails(path, flags)) return -1;
  return next<int(const char*, int, mode_t)>("open")(path, flags, mode);
}

int open64(const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = modeIn(flags, arguments);
  va_end(arguments);
  if (openFails(path, flags)) return -1;
  return next<int(const char*, int, mode_t)>("open64")(path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = modeIn(flags, arguments);
  va_end(arguments);
  if (openFails(path, flags)) return -1;
  return next<int(int, const char*, int, mode_t)>("openat")(folder, path, flags, mode);
}

FILE* fopen(const char* path, const char* mode) {
  const bool reads = std::string_view(mode).find_first_of("wa+") == std::string_view::npos;
  if (failsOn(reads ? "open-read" : "open-write", path)) return nullptr;
  return next<FILE*(const char*, const char*)>("fopen")(path, mode);
}

FILE* fopen64(const char* path, const char* mode) {
  const bool reads = std::string_view(mode).find_first_of("wa+") == std::string_view::npos;
  if (failsOn(reads ? "open-read" : "open-write", path)) return nullptr;
  return next<FILE*(const char*, const char*)>("fopen64")(path, mode);
}

ssize_t read(int file, void* bytes, std::size_t size) {
  if (failsOn("read", file)) return -1;
  return next<ssize_t(int, void*, std::size_t)>("read")(file, bytes, size);
}

ssize_t pread(int file, void* bytes, std::size_t size, off_t offset) {
  if (failsOn("read", file)) return -1;
  return next<ssize_t(int, void*, std::size_t, off_t)>("pread")(file, bytes, size, offset);
}

ssize_t write(int file, const void* bytes, std::size_t size) {
  const auto real = next<ssize_t(int, const void*, std::size_t)>("write");
  return written(file, size, [&](std::size_t part) { return real(file, bytes, part); });
}

ssize_t pwrite(int file, const void* bytes, std::size_t size, off_t offset) {
  const auto real = next<ssize_t(int, const void*, std::size_t, off_t)>("pwrite");
  return written(file, size, [&](std::size_t part) { return real(file, bytes, part, offset); });
}

ssize_t pwrite64(int file, const void* bytes, std::size_t size, off64_t offset) {
  const auto real = next<ssize_t(int, const void*, std::size_t, off64_t)>("pwrite64");
  return written(file, size, [&](std::size_t part) { return real(file, bytes, part, offset); });
}

ssize_t writev(int file, const iovec* parts, int count) {
  if (failsOn("write", file)) return -1;
  return next<ssize_t(int, const iovec*, int)>("writev")(file, parts, count);
}

std::size_t fwrite(const void* bytes, std::size_t size, std::size_t count, FILE* stream) {
  const auto real = next<std::size_t(const void*, std::size_t, std::size_t, FILE*)>("fwrite");
  if (::__fbufsize(stream) > 1) return real(bytes, size, count, stream);
  const ssize_t items = written(::fileno(stream), count, [&](std::size_t part) {
    return static_cast<ssize_t>(real(bytes, size, part, stream));
  });
  return items < 0 ? 0 : static_cast<std::size_t>(items);
}

int fallocate(int file, int mode, off_t offset, off_t size) {
  if (failsOn("fallocate", file)) return -1;
  return next<int(int, int, off_t, off_t)>("fallocate")(file, mode, offset, size);
}

int ftruncate(int file, off_t size) noexcept {
  if (failsOn("ftruncate", file)) return -1;
  return next<int(int, off_t)>("ftruncate")(file, size);
}

int truncate(const char* path, off_t size) noexcept {
  if (failsOn("ftruncate", path)) return -1;
  return next<int(const char*, off_t)>("truncate")(path, size);
}

int fsync(int file) {
  if (failsOn("fsync", file)) return -1;
  return next<int(int)>("fsync")(file);
}

int fdatasync(int file) {
  if (failsOn("fsync", file)) return -1;
  return next<int(int)>("fdatasync")(file);
}

int close(int file) {
  const bool failed = isForWriting(file) && failsOn("close", file);
  const int error = errno;
  const int result = next<int(int)>("close")(file);
  if (!failed) return result;
  errno = error;
  return -1;
}

int fclose(FILE* stream) {
  const bool failed = isForWriting(::fileno(stream)) && failsOn("close", ::fileno(stream));
  const int error = errno;
  const int result = next<int(FILE*)>("fclose")(stream);
  if (!failed) return result;
  errno = error;
  return EOF;
}

int rename(const char* from, const char* to) noexcept {
  if (renameFails(from, to)) return -1;
  return next<int(const char*, const char*)>("rename")(from, to);
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept {
  if (renameFails(from, to)) return -1;
  return next<int(int, const char*, int, const char*)>("renameat")(fromFolder, from, toFolder, to);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept {
  if (renameFails(from, to)) return -1;
  using Rename = int(int, const char*, int, const char*, unsigned);
  return next<Rename>("renameat2")(fromFolder, from, toFolder, to, flags);
}

int unlink(const char* path) noexcept {
  if (failsOn("unlink", path)) return -1;
  return next<int(const char*)>("unlink")(path);
}

int unlinkat(int folder, const char* path, int flags) noexcept {
  if (failsOn("unlink", path)) return -1;
  return next<int(int, const char*, int)>("unlinkat")(folder, path, flags);
}

int remove(const char* path) noexcept {
  if (failsOn("unlink", path)) return -1;
  return next<int(const char*)>("remove")(path);
}

int mkdir(const char* path, mode_t mode) noexcept {
  if (failsOn("mkdir", path)) return -1;
  return next<int(const char*, mode_t)>("mkdir")(path, mode);
}

int chmod(const char* path, mode_t mode) noexcept {
  if (failsOn("chmod", path)) return -1;
  return next<int(const char*, mode_t)>("chmod")(path, mode);
}

int fchmodat(int folder, const char* path, mode_t mode, int flags) noexcept {
  if (failsOn("chmod", path)) return -1;
  return next<int(int, const char*, mode_t, int)>("fchmodat")(folder, path, mode, flags);
}

int chown(const char* path, uid_t user, gid_t group) noexcept {
  if (failsOn("chown", path)) return -1;
  return next<int(const char*, uid_t, gid_t)>("chown")(path, user, group);
}

int fchownat(int folder, const char* path, uid_t user, gid_t group, int flags) noexcept {
  if (failsOn("chown", path)) return -1;
  return next<int(int, const char*, uid_t, gid_t, int)>("fchownat")(folder, path, user, group, flags);
}

}  // extern "C"
