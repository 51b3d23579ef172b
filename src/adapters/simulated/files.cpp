// A stream is a file, the path that faults depend on, and a position.
#include "src/adapters/simulated/files.h"

#include <algorithm>
#include <cstring>

#include "src/server/mac/text/escape.h"

namespace norvik {

struct SimulatedFiles::Stream {
  std::shared_ptr<SimulatedFile> file;
  std::string path;  // empty for a pipe
  std::string name;
  bool writable = false;
  bool seekable = true;
  std::size_t position = 0;
};

SimulatedFiles::SimulatedFiles(FileSystem& fileSystem, const FileFaults& faults,
                               const EffectReporter& effects)
    : fileSystem_(fileSystem), faults_(faults), effects_(effects) {}

SimulatedFiles::~SimulatedFiles() = default;

SimulatedFiles::Stream& SimulatedFiles::streamOf(FileRef file) {
  return *reinterpret_cast<Stream*>(file);
}

FileRef SimulatedFiles::add(Stream stream) {
  streams_.push_back(std::make_unique<Stream>(std::move(stream)));
  return reinterpret_cast<FileRef>(streams_.back().get());
}

FileRef SimulatedFiles::fopen(const char* path, FileMode mode) {
  const bool writes = mode == FileMode::writeBinary;
  if (faults_.has(writes ? FileOperation::openWrite : FileOperation::openRead, path)) return nullptr;
  if (writes && !fileSystem_.userMayWrite(path)) return nullptr;
  auto file = writes ? fileSystem_.create(path, FileSystem::kUser) : fileSystem_.find(path);
  if (file == nullptr) return nullptr;
  if (writes) effects_.report(EffectKind::write, "write " + quoted(path));
  return add({std::move(file), path, "the file " + quoted(path), writes});
}

int SimulatedFiles::fseek(FileRef file, int64_t offset, SeekOrigin origin) {
  Stream& stream = streamOf(file);
  if (!stream.seekable || faults_.has(FileOperation::seek, stream.path)) return -1;
  const int64_t base = origin == SeekOrigin::end ? static_cast<int64_t>(stream.file->bytes.size()) : 0;
  if (base + offset < 0) return -1;
  stream.position = static_cast<std::size_t>(base + offset);
  return 0;
}

int64_t SimulatedFiles::ftell(FileRef file) {
  const Stream& stream = streamOf(file);
  if (!stream.seekable || faults_.has(FileOperation::tell, stream.path)) return -1;
  return static_cast<int64_t>(stream.position);
}

std::size_t SimulatedFiles::fread(void* bytes, std::size_t size, FileRef file) {
  Stream& stream = streamOf(file);
  if (stream.writable || faults_.has(FileOperation::read, stream.path)) return 0;
  const std::string& content = stream.file->bytes;
  const std::size_t rest = content.size() - std::min(stream.position, content.size());
  const std::size_t count = std::min(size, rest);
  if (count > 0) std::memcpy(bytes, content.data() + stream.position, count);
  stream.position += count;
  return count;
}

std::size_t SimulatedFiles::fwrite(const void* bytes, std::size_t size, FileRef file) {
  Stream& stream = streamOf(file);
  if (!stream.writable || faults_.has(FileOperation::write, stream.path)) return 0;
  std::string& content = stream.file->bytes;
  const std::size_t end = stream.position + size;
  if (content.size() < end) content.resize(end);
  if (size > 0) std::memcpy(content.data() + stream.position, bytes, size);
  stream.position = end;
  return size;
}

int SimulatedFiles::fclose(FileRef file) {
  const bool fails = faults_.has(FileOperation::close, streamOf(file).path);
  std::erase_if(streams_, [&](const auto& stream) { return stream.get() == &streamOf(file); });
  return fails ? -1 : 0;
}

int SimulatedFiles::mkdir(const char* path, uint32_t mode) {
  std::string digits;
  for (int shift = 9; shift >= 0; shift -= 3) digits += static_cast<char>('0' + (mode >> shift & 7));
  effects_.report(EffectKind::makeDirectory, "mkdir " + quoted(path) + ' ' + digits);
  if (faults_.has(FileOperation::makeDirectory, path) || !fileSystem_.userMayWrite(path)) return -1;
  return fileSystem_.makeDirectory(path) ? 0 : -1;
}

FileRef SimulatedFiles::openPipe(std::string_view commandLine, std::string output) {
  auto file = std::make_shared<SimulatedFile>(SimulatedFile{std::move(output), ""});
  Stream stream{std::move(file), "", "the pipe of " + std::string(commandLine)};
  stream.seekable = false;
  return add(std::move(stream));
}

std::vector<std::string> SimulatedFiles::openStreams() const {
  std::vector<std::string> names;
  names.reserve(streams_.size());
  for (const auto& stream : streams_) names.push_back(stream->name);
  return names;
}

}  // namespace norvik
