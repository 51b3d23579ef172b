// Streams over descriptors, which were opened without waiting.
#include "src/adapters/posix/files.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "src/adapters/posix/temporary_files.h"

namespace norvik {

namespace {

FILE* stream(FileRef file) {
  return reinterpret_cast<FILE*>(file);
}

FileRef streamOver(Descriptor descriptor, const char* mode) {
  if (!descriptor) return nullptr;
  FILE* opened = ::fdopen(descriptor.number(), mode);
  if (opened != nullptr) descriptor.release();  // the stream owns it now
  return reinterpret_cast<FileRef>(opened);
}

}  // namespace

FileRef readingStream(Descriptor descriptor) {
  return streamOver(std::move(descriptor), "rb");
}

FileRef PosixFiles::fopen(const char* path, FileMode mode) {
  const std::string place = root_.onDisk(path);
  if (mode == FileMode::readBinary) return readingStream(openForReading(place));
  const FileRef file = streamOver(isTemporary(path) ? createTemporary(place) : openForWriting(place), "wb");
  // Without a buffer, a full disk shows at the write that fails, and not at a close whose result is lost.
  if (file != nullptr) std::setvbuf(stream(file), nullptr, _IONBF, 0);
  return file;
}

int PosixFiles::fseek(FileRef file, int64_t offset, SeekOrigin origin) {
  return ::fseeko(stream(file), offset, origin == SeekOrigin::start ? SEEK_SET : SEEK_END);
}

int64_t PosixFiles::ftell(FileRef file) {
  return ::ftello(stream(file));
}

std::size_t PosixFiles::fread(void* bytes, std::size_t size, FileRef file) {
  std::size_t done = 0;
  // A signal that the program handles may cut a read of a pipe short; that is not an error.
  while (done < size) {
    errno = 0;
    done += std::fread(static_cast<char*>(bytes) + done, 1, size - done, stream(file));
    if (done == size || std::ferror(stream(file)) == 0 || errno != EINTR) break;
    std::clearerr(stream(file));
  }
  return done;
}

std::size_t PosixFiles::fwrite(const void* bytes, std::size_t size, FileRef file) {
  const WriteSignalGuard guard;
  return std::fwrite(bytes, 1, size, stream(file));
}

// The files that the pane writes with streams are temporary ones, which it then has moved over others: a file
// that was moved before the disk has its bytes would be empty after a power cut.
int PosixFiles::fclose(FileRef file) {
  const WriteSignalGuard guard;
  const int number = ::fileno(stream(file));
  const bool reads = (::fcntl(number, F_GETFL) & O_ACCMODE) == O_RDONLY;
  const bool synced = reads || syncFile(number);
  return std::fclose(stream(file)) == 0 && synced ? 0 : -1;
}

int PosixFiles::mkdir(const char* path, uint32_t mode) {
  return ::mkdir(root_.onDisk(path).c_str(), static_cast<mode_t>(mode));
}

}  // namespace norvik
