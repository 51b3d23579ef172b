// Finds files in the table that the build generates from this folder.
#include "resources/resources.h"

#include "resources/embedded_files.h"

namespace norvik {
namespace {

// Whether a file name is the name, a full stop and the type.
bool isNamed(std::string_view fileName, std::string_view name, std::string_view type) {
  return fileName.size() == name.size() + 1 + type.size() && fileName.starts_with(name) &&
         fileName[name.size()] == '.' && fileName.ends_with(type);
}

}  // namespace

std::optional<std::string_view> resourceFile(std::string_view name, std::string_view type) {
  for (const EmbeddedFile& file : embeddedFiles()) {
    if (!isNamed(file.fileName, name, type)) continue;
    return std::string_view(reinterpret_cast<const char*>(file.bytes), file.size);
  }
  return std::nullopt;
}

std::string_view interfacePropertyList() {
  return resourceFile("Interface", "plist").value_or("");
}

std::string_view infoPropertyList() {
  return resourceFile("Info", "plist").value_or("");
}

}  // namespace norvik
