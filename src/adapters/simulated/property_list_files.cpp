// Reads and writes whole files through the codec.
#include "src/adapters/simulated/property_list_files.h"

#include "src/adapters/property_lists/codec.h"
#include "src/server/mac/text/escape.h"

namespace norvik {

SimulatedPropertyListFiles::SimulatedPropertyListFiles(FileSystem& fileSystem, const FileFaults& faults,
                                                       const EffectReporter& effects)
    : fileSystem_(fileSystem), faults_(faults), effects_(effects) {}

std::optional<PropertyList> SimulatedPropertyListFiles::dictionaryWithContentsOfFile(
    const std::string& path) {
  if (faults_.has(FileOperation::openRead, path) || faults_.has(FileOperation::read, path))
    return std::nullopt;
  const auto file = fileSystem_.find(path);
  if (file == nullptr) return std::nullopt;
  auto list = decodePropertyList(file->bytes);
  if (!list || list->as<PropertyList::Dictionary>() == nullptr) return std::nullopt;
  return list;
}

bool SimulatedPropertyListFiles::writeToFile(const PropertyList& dictionary, const std::string& path) {
  auto text = encodeReadableXmlPropertyList(dictionary);
  if (!text || faults_.has(FileOperation::openWrite, path) || !fileSystem_.userMayWrite(path)) return false;
  const auto file = fileSystem_.create(path, FileSystem::kUser);
  if (file == nullptr) return false;
  effects_.report(EffectKind::write, "write " + quoted(path));
  if (faults_.has(FileOperation::write, path)) return false;
  file->bytes = std::move(*text);
  return true;
}

std::string SimulatedPropertyListFiles::stringByExpandingTildeInPath(std::string_view path) {
  const bool leadsHome = path == "~" || path.starts_with("~/");
  return leadsHome ? fileSystem_.home() + std::string(path.substr(1)) : std::string(path);
}

}  // namespace norvik
