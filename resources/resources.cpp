// Looks files up in the table that the build makes of this folder.
#include "resources/resources.h"

#include "resources/embedded_files.h"

namespace norvik {
namespace {

// Whether a file name is the name, a full stop and the type.
bool isNamed(std::string_view file_name, std::string_view name, std::string_view type) {
  return file_name.size() == name.size() + 1 + type.size() && file_name.starts_with(name) &&
         file_name[name.size()] == '.' && file_name.ends_with(type);
}

}  // namespace

std::optional<std::string_view> resourceFile(std::string_view name, std::string_view type) {
  for (const EmbeddedFile& file : embeddedFiles()) {
    if (!isNamed(file.file_name, name, type)) continue;
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
