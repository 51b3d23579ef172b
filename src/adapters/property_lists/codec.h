// Bytes to property list values and back. Shared by every adapter that keeps property lists in files, so that
// the simulated computer and the real one read and write the same.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "src/server/mac/platform/property_list.h"

namespace norvik {

// Files with more bytes, or nested more deeply, are not accepted as property lists.
inline constexpr std::size_t kMaxPropertyListBytes = std::size_t{64} << 20;
inline constexpr int kMaxPropertyListDepth = 512;
// Files that expand to more values, keys included, or to more than kMaxPropertyListBytes of text and data are
// not accepted either: a few bytes can expand to far more in memory, and a binary file can refer to one value
// many times. Reading therefore needs at most eight times kMaxPropertyListBytes of memory.
inline constexpr std::size_t kMaxPropertyListValues = 250'000;

// What is wrong with bytes that are no property list, for a person who may mend the file.
struct PropertyListDamage {
  int line = 0;      // where it shows, from 1; 0 where no line can be named, as in the binary format
  std::string what;  // no whole sentence: "\"&\" is not followed by the name of a character"

  // "line 3: WHAT", or "WHAT" alone.
  std::string sentence() const;
};

// Reads XML, binary or old-style ASCII, recognised by the first bytes. Nothing for bytes that are damaged,
// truncated, too many, nested too deeply or standing for too much. The root may be of any type. Throws
// std::bad_alloc.
std::optional<PropertyList> decodePropertyList(std::string_view bytes);
// The same, and says why where it returns nothing.
std::optional<PropertyList> decodePropertyList(std::string_view bytes, PropertyListDamage& damage);

// Writes XML property-list format, version 1.0, UTF-8. Everything that decodePropertyList reads is preserved,
// except the fraction of a second of a date, which the format cannot hold.
std::string encodeXmlPropertyList(const PropertyList& list);
// The same for a file: nothing where decodePropertyList would not read it again, because it is too large or
// too deep, has too many values or a date that is none.
std::optional<std::string> encodeReadableXmlPropertyList(const PropertyList& list);

// Writes the binary format ("bplist00").
std::string encodeBinaryPropertyList(const PropertyList& list);

}  // namespace norvik
