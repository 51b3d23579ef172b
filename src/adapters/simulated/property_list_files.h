// Property lists in the files of the simulated computer.
#pragma once

#include <string>
#include <string_view>

#include "src/adapters/simulated/effects.h"
#include "src/adapters/simulated/file_system.h"
#include "src/server/mac/platform/property_lists.h"

namespace norvik {

class SimulatedPropertyListFiles : public PropertyListFiles {
 public:
  SimulatedPropertyListFiles(FileSystem& fileSystem, const FileFaults& faults, const EffectReporter& effects);

  // Fails if opening for reading, or reading, is set to fail.
  std::optional<PropertyList> dictionaryWithContentsOfFile(const std::string& path) override;
  // Fails if opening for writing, or writing, is set to fail; in the latter case the file is empty
  // afterwards.
  bool writeToFile(const PropertyList& dictionary, const std::string& path) override;
  std::string stringByExpandingTildeInPath(std::string_view path) override;

 private:
  FileSystem& fileSystem_;
  const FileFaults& faults_;
  const EffectReporter& effects_;
};

}  // namespace norvik
