// The three formats behind the codec, each read from memory or written to it as a whole. The codec recognises
// the format and enforces the limit of size; each reader enforces the limit of depth.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "src/adapters/property_lists/codec.h"

namespace norvik {

// Whether a dictionary or an array may be at this depth, where the root is at 1. A single value has no depth.
inline bool isDepthAllowed(int depth) {
  return depth <= kMaxPropertyListDepth;
}

// Whether text begins, after white space, like the XML format. The old-style format may begin with "<" too.
bool looksLikeXml(std::string_view text);

// UTF-8 text to a list; nothing for text that is not entirely a property list.
std::optional<PropertyList> readXml(std::string_view text);
std::optional<PropertyList> readAscii(std::string_view text);

// The name of the encoding in an XML declaration; empty if there is none.
std::string_view declaredEncoding(std::string_view text);

// Bytes that begin with kBinaryMagic to a list. The two digits of the version follow it.
inline constexpr std::string_view kBinaryMagic = "bplist";
std::optional<PropertyList> readBinary(std::string_view bytes);

// A reference in a keyed archive. Only the binary format has a type for it; elsewhere it is a dictionary with
// this one key.
inline constexpr std::string_view kUidKey = "CF$UID";

}  // namespace norvik
