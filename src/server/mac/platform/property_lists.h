// Platform interface to the property lists kept in files, and to the user's home folder. Called on the main
// thread only; blocks as the file system does.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "src/server/mac/platform/property_list.h"

namespace norvik {

class PropertyListFiles {
 public:
  virtual ~PropertyListFiles() = default;

  // The dictionary at the root of the property list in the file, whichever encoding it has. Nothing if the
  // file is missing, unreadable, no property list, too large or too deep for the system's reader, or its root
  // is no dictionary.
  virtual std::optional<PropertyList> dictionaryWithContentsOfFile(const std::string& path) = 0;

  // Writes the dictionary to the file in XML format. The file is written in place, not by way of another one,
  // so that it keeps its owner and mode. An adapter writes first and cuts afterwards, where its system lets
  // it: the file is at no instant empty, and where writing fails, it has its old bytes back or is missing
  // again. False if it could not be written completely, and, before it is touched, if the file could not be
  // read again. How numbers are written is the system's: the file reads back as an equal dictionary.
  virtual bool writeToFile(const PropertyList& dictionary, const std::string& path) = 0;

  // `path` with a leading "~", alone or before a "/", replaced by the home folder of the user who runs the
  // pane, which has no "/" at its end. Any other path as it is.
  virtual std::string stringByExpandingTildeInPath(std::string_view path) = 0;
};

}  // namespace norvik
