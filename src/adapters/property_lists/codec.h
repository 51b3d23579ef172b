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

// Reads XML, binary or old-style ASCII, recognised by the first bytes. Nothing for bytes that are damaged,
// truncated, too many or nested too deeply. The root may be of any type.
std::optional<PropertyList> decodePropertyList(std::string_view bytes);

// Writes XML property-list format, version 1.0, UTF-8. Everything that decodePropertyList reads is preserved,
// except the fraction of a second of a date, which the format cannot hold.
std::string encodeXmlPropertyList(const PropertyList& list);

// Writes the binary format ("bplist00").
std::string encodeBinaryPropertyList(const PropertyList& list);

}  // namespace norvik
