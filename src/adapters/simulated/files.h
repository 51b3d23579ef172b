// File streams of the simulated computer, over its file system.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "src/adapters/simulated/effects.h"
#include "src/adapters/simulated/file_system.h"
#include "src/server/mac/platform/files.h"

namespace norvik {

class SimulatedFiles : public Files {
 public:
  SimulatedFiles(FileSystem& fileSystem, const FileFaults& faults, const EffectReporter& effects);
  ~SimulatedFiles() override;

  FileRef fopen(const char* path, FileMode mode) override;
  int fseek(FileRef file, int64_t offset, SeekOrigin origin) override;
  int64_t ftell(FileRef file) override;
  std::size_t fread(void* bytes, std::size_t size, FileRef file) override;
  std::size_t fwrite(const void* bytes, std::size_t size, FileRef file) override;
  int fclose(FileRef file) override;
  int mkdir(const char* path, uint32_t mode) override;

  // The reading end of a pipe whose writer, started with `commandLine`, wrote `output` and closed it. To be
  // closed with fclose.
  FileRef openPipe(std::string_view commandLine, std::string output);
  // The streams that were opened and not closed yet, in order: `the file "/tmp/x"`, `the pipe of
  // COMMANDLINE`.
  std::vector<std::string> openStreams() const;

 private:
  struct Stream;
  static Stream& streamOf(FileRef file);
  FileRef add(Stream stream);

  FileSystem& fileSystem_;
  const FileFaults& faults_;
  const EffectReporter& effects_;
  std::vector<std::unique_ptr<Stream>> streams_;
};

}  // namespace norvik
