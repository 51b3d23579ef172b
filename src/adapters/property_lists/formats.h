// The three formats behind the codec, each read whole from memory or written whole to it. The codec tells
// them apart and holds the limit of size; each reader holds the limit of depth.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "src/adapters/property_lists/codec.h"

namespace norvik {

// Whether a dictionary or an array may stand at a depth, the root's being 1. A single value has no depth.
inline bool isDepthAllowed(int depth) {
  return depth <= kMaxPropertyListDepth;
}

// Whether text goes on, after white space, as the XML format does. The old-style format may begin with "<"
// too.
bool looksLikeXml(std::string_view text);

// UTF-8 text to a list; nothing for text that is no property list, or not to its end.
std::optional<PropertyList> readXml(std::string_view text);
std::optional<PropertyList> readAscii(std::string_view text);

// The name of the encoding that an XML declaration gives; empty when it gives none.
std::string_view declaredEncoding(std::string_view text);

// Bytes that begin with kBinaryMagic to a list. The two digits of the version follow it.
inline constexpr std::string_view kBinaryMagic = "bplist";
std::optional<PropertyList> readBinary(std::string_view bytes);

// A reference that a keyed archive keeps, which only the binary format has a type for: elsewhere it is a
// dictionary of this one key.
inline constexpr std::string_view kUidKey = "CF$UID";

}  // namespace norvik
