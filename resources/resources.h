// The files of this folder, which are built into the programs, so that a program does not have to find them.
// Knows files by name and type only; reads nothing at run time.
#pragma once

#include <optional>
#include <string_view>

namespace norvik {

// The bytes of a file, by its name and its type as a bundle names them: "authlock" and "tiff" for
// authlock.tiff. Nothing if there is no such file. The bytes live as long as the program.
std::optional<std::string_view> resourceFile(std::string_view name, std::string_view type);

// The interface description, a property list in XML.
std::string_view interfacePropertyList();

// The pane bundle's Info dictionary, a property list in XML.
std::string_view infoPropertyList();

}  // namespace norvik
